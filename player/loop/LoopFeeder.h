#pragma once

#include "player/loop/KeptFrames.h"
#include "player/loop/LoopRange.h"
#include "player/loop/QueuedFrame.h"
#include "player/pictures/FrameReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace stackreel
{

/// Unrolls a repeated range into one endless sequence of frames and the moments they are due: where the
/// range begins again, its first frame follows when the range's end is reached, however long the last frame
/// was. The first frames are kept on the way and bridge the time the decoder needs to get back.
///
/// One thread; the reader is used by nobody else meanwhile.
class LoopFeeder
{
public:
    enum class Step {
        waiting, ///< nothing can be done until the reader wakes, or at `deadline`
        working, ///< go on
        frame,   ///< the next frame
        failed,  ///< the file shows nothing
    };

    /// Frames of at most `budget` bytes are kept.
    LoopFeeder(FrameReader& reader, LoopRange range, std::size_t budget);

    /// The next frame is the one on screen at `time`, due at once. From a time outside the range only that
    /// one frame comes.
    void beginAt(Nanoseconds time);
    /// Does one bit of work; on `Step::frame` the result is in `next`.
    Step step(QueuedFrame& next);
    /// As the reader's, while frames are taken from it.
    std::optional<Clock::Instant> deadline() const;

    /// Takes the range's first frames, made elsewhere, from the next beginning of the range on.
    /// False when they are not those that it needs.
    bool adopt(std::shared_ptr<const KeptFrames> kept);
    /// Nothing will be adopted: frames kept in another size than is shown now are not used any more. Until
    /// then they are, since a range that begins again a bit blurred is better than one that comes late.
    void dropOutdated() { m_dropsOutdated = true; }

    /// The first frames of the range as far as they were gathered; none before that is done.
    std::shared_ptr<const KeptFrames> kept() const { return m_kept; }
    const LoopRange& range() const { return m_range; }
    /// The frames come from memory, so that it makes no sense to fetch many at once.
    bool replaysAll() const { return m_replayed.has_value() && m_kept->complete; }
    /// Only the one frame outside the range was asked for, and it came.
    bool parked() const { return m_parked; }
    /// The range could not begin again at once, for want of its first frames in the size they are shown at.
    bool needsHead() const { return !m_collecting && headRange() != LoopRange(); }
    /// Where those frames are to be taken from; empty when none are needed.
    LoopRange headRange() const;

private:
    Step replay(QueuedFrame& next);
    Step accept(const PlanarFramePtr& frame, QueuedFrame& next);
    Step endOfPictures();
    Step endOfRange(Nanoseconds end);
    Nanoseconds endOfMedia() const;
    void beginAgain();
    void startCollecting();
    bool replayFrom(Nanoseconds time);
    QueuedFrame queued(const PlanarFramePtr& frame, bool kept);

    FrameReader& m_reader;
    LoopRange m_range;
    std::size_t m_budget;
    bool m_parked = false;
    bool m_outside = false;
    bool m_dropsOutdated = false;
    Nanoseconds m_base = 0; ///< played time at which the present run through the range began
    std::uint64_t m_iteration = 0;
    std::optional<Nanoseconds> m_entry;    ///< the position of the next frame when that is not its own time
    std::optional<std::size_t> m_replayed; ///< how many kept frames were replayed in this run
    PlanarFramePtr m_last;                 ///< delivered last
    std::shared_ptr<KeptFrames> m_collecting;
    std::shared_ptr<const KeptFrames> m_kept;
    std::shared_ptr<const KeptFrames> m_adopted;
};

} // namespace stackreel
