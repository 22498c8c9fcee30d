#pragma once

#include "player/base/MediaTime.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace stackreel
{

class VideoOutput;

/// Plays video and sound. Used on the main thread only, and no call blocks it: each takes effect as soon as
/// the player can. A player never fails towards its owner; what cannot be played shows nothing.
class QueuePlayer
{
public:
    enum class ActionAtItemEnd {
        advance, ///< to the next item, of which there is none: the player loses its item
        pause,   ///< as `pause` does, on the last frame
        none,    ///< the last frame stays; a seek back plays on
    };
    /// Names a registered observer; 0 names none.
    using TimeObserverToken = std::uint64_t;
    using TimeObserver = std::function<void(MediaTime)>;

    virtual ~QueuePlayer() = default;

    virtual void play() = 0;
    virtual void pause() = 0;
    /// Shows the frame within the tolerances of a time. With none, exactly the frame that is on screen at
    /// that time. While a seek is under way only the latest further request is kept, and that one is always
    /// carried out.
    virtual void seek(MediaTime time, MediaTime toleranceBefore, MediaTime toleranceAfter) = 0;
    virtual void removeAllItems() = 0;
    virtual void setMuted(bool muted) = 0;
    virtual bool isMuted() const = 0;
    /// What happens when an item has played to its end. A looper needs `none`.
    virtual void setActionAtItemEnd(ActionAtItemEnd action) = 0;

    /// Calls `observer` on the main thread with the current time, every `interval` while playing and after
    /// each jump, until the token is handed back. A player without an item reports no time.
    virtual TimeObserverToken addPeriodicTimeObserver(MediaTime interval, TimeObserver observer) = 0;
    virtual void removeTimeObserver(TimeObserverToken token) = 0;

    /// Sends the pictures to `output` from now on, first the current one; none detaches. May be replaced at
    /// any time.
    virtual void setVideoOutput(std::shared_ptr<VideoOutput> output) = 0;
    /// The size, in device pixels, at which the pictures will be shown; frames are scaled to fit inside it,
    /// keeping the picture's aspect. Until it is first set frames come in a preview size of the player's
    /// choice.
    virtual void setVideoSize(int width, int height) = 0;
};

} // namespace stackreel
