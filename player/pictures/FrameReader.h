#pragma once

#include "player/base/Clock.h"
#include "player/pictures/FrameScaler.h"
#include "player/pictures/PlanarFrame.h"
#include "player/source/DecodePipeline.h"
#include "player/source/EndOfStream.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stackreel
{

/// Delivers the frames of a file in order, from any time on. No call waits for a frame.
///
/// A seek goes to a key frame and decodes on. This class decides which frame is the one at the time, because
/// only the next frame's time says how long a frame really stays.
///
/// One thread. Times are nanoseconds on the file's time line.
class FrameReader
{
public:
    enum class Step {
        waiting, ///< nothing can be done until `wake` is called, or at `deadline`
        working, ///< call again at once
        frame,   ///< the next frame
        end,     ///< no frame follows; the stream ended, or broke off
        failed,  ///< no frame at all can be had
    };

    /// Opens the file, to be read from its beginning. `wake` as with `DecodePipeline`. After an error, frames
    /// may still be on their way through the decoder: none is expected any more when none came for
    /// `drainTimeout`. Throws `std::runtime_error` when GStreamer lacks an element.
    FrameReader(SourceFile file, PictureSize box, std::function<void()> wake,
                std::chrono::nanoseconds drainTimeout = std::chrono::seconds(2));

    /// The next frame will be the one on screen at `time`: the last that starts no later. Where the file
    /// begins after or ends before that time, it is the first or last frame.
    void showFrom(Nanoseconds time);
    /// The next frame will be the key frame at `time`, and no frame follows it.
    void showKeyFrame(Nanoseconds time);
    /// The next frame will be the first that starts after `time`.
    void continueAfter(Nanoseconds time);

    /// Decodes on: the next frame will be the one on screen at `time`, which lies ahead of those delivered so
    /// far, or the very next one where that is later already.
    void decodeOnTo(Nanoseconds time);

    /// Releases the decoder, its pictures and the file. The next step opens the file again and goes on where
    /// this one stopped.
    void releaseDecoder();
    bool isReleased() const { return !m_pipeline; }
    /// Whether the next frame follows directly on the one delivered last, which starts at `time`.
    bool isBehind(Nanoseconds time) const { return !m_goal && m_deliveredTime == time; }

    /// Does a small piece of work. On `Step::frame` the frame is in `frame`.
    Step step(PlanarFramePtr& frame);
    /// When to call `step` again without a wake; none unless an error came and frames may still follow.
    std::optional<Clock::Instant> deadline() const { return m_end.deadline(); }
    /// Reading stopped early, so the file may have more frames than were delivered.
    bool endedEarly() const { return m_pipeline && m_pipeline->failed(); }

    /// Why reading stopped early; empty when it did not.
    std::string failureReason() const { return m_pipeline ? m_pipeline->failureReason() : std::string(); }

    /// Applies from the next frame on.
    void setBox(PictureSize box) { m_scaler.setBox(box); }
    PictureSize box() const { return m_scaler.box(); }
    /// The file's length as it claims, 0 when it does not say.
    Nanoseconds claimedDuration() const;

private:
    struct Picture {
        GstSamplePtr sample;
        Nanoseconds time = 0;
        Nanoseconds duration = 0;
    };
    struct Goal {
        Nanoseconds time;
        bool inclusive; ///< the frame under the time is wanted, not the one after
        bool keyFrameOnly = false;
        bool operator==(const Goal&) const = default;
    };

    void setGoal(Goal goal);
    void open();
    bool seekToGoal();
    bool seek();
    Orientation orientation();
    Step seekEarlier();
    bool isMisplaced(Nanoseconds time) const;
    Step readFromBeginning();
    Step approach(Picture picture, PlanarFramePtr& frame);
    Step endOfStream(PlanarFramePtr& frame);
    Step deliver(Picture picture, PlanarFramePtr& frame);

    SourceFile m_file;
    std::function<void()> m_wake;
    FrameScaler m_scaler;
    std::unique_ptr<DecodePipeline> m_pipeline; ///< none while released
    Nanoseconds m_releasedDuration = 0;         ///< what the file claimed until then
    std::optional<Goal> m_goal;
    bool m_seekPending = false;
    bool m_decodesOn = true;   ///< the stream goes on behind the goal
    bool m_atBeginning = true; ///< just opened: reading from the beginning needs no seek
    EndOfStream m_end;
    std::optional<Orientation>
        m_ignoredOrientation; ///< see `ignoredOrientation`; none until it was looked up
    Nanoseconds m_seekTime = 0;
    Nanoseconds m_stepBack = 0;            ///< how far before the goal the seek went; negative when after it
    Nanoseconds m_lastTime = -1;           ///< of the sample last read since the seek
    Nanoseconds m_firstTime = -1;          ///< of the file's first picture; negative until that was read
    Nanoseconds m_deliveredTime = -second; ///< of the frame delivered last
    std::optional<Picture> m_candidate;
    std::optional<Picture> m_following;
};

} // namespace stackreel
