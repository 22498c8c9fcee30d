#pragma once

#include "player/base/MediaTime.h"
#include "player/base/PlayerState.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

namespace stackreel
{

class VideoOutput;

/// Repeats a range of a video file without a gap, with sound. Main thread. No call blocks: each takes effect
/// as soon as the player can, and of several calls of a kind the latest counts. A new player is empty, paused
/// and not muted.
class PreviewPlayer
{
public:
    /// Names a registered observer; 0 names none.
    using TimeObserverToken = std::uint64_t;
    using TimeObserver = std::function<void(MediaTime)>;

    virtual ~PreviewPlayer() = default;

    /// Opens a range of a file (an absolute path) in place of the one before, at the range's start. Plays on
    /// if the player is playing. Of a range that reaches past the file's end, the existing part is repeated.
    virtual void open(const std::filesystem::path& file, MediaTimeRange range) = 0;
    /// Closes the file and shows nothing.
    virtual void close() = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    /// Shows exactly the frame that is on screen at a time. While a seek is in flight only the latest further
    /// request is kept, and that one is always carried out. A time outside the range shows its frame;
    /// playback then starts at the range's start. Ignored without a time.
    virtual void seek(MediaTime time) = 0;
    virtual void setMuted(bool muted) = 0;

    /// What the player is doing at this moment.
    virtual PlayerState state() const = 0;

    /// Calls `observer` on the main thread with the current time, every `interval` while playing and after
    /// each jump, until the observer is removed. A closed player reports no time.
    virtual TimeObserverToken addPeriodicTimeObserver(MediaTime interval, TimeObserver observer) = 0;
    virtual void removeTimeObserver(TimeObserverToken token) = 0;

    /// Sends the pictures to `output` from now on, first the current one; none detaches. May be replaced at
    /// any time.
    virtual void setVideoOutput(std::shared_ptr<VideoOutput> output) = 0;
    /// The size, in device pixels, at which the pictures will be shown. Frames are scaled to fit inside it,
    /// keeping the picture's aspect. Until it is first set, frames come in a preview size of the player's
    /// choice.
    virtual void setVideoSize(int width, int height) = 0;
};

} // namespace stackreel
