#pragma once

#include "player/loop/KeptFrames.h"
#include "player/loop/LoopRange.h"
#include "player/loop/QueuedFrame.h"
#include "player/pictures/FrameReader.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace stackreel
{

/// Unrolls a repeated range into one endless sequence of frames with due times. At a wrap, the first frame is
/// due when the range's end is reached, however long the last frame was. The first frames are kept; they
/// bridge the time that the decoder needs to get back.
///
/// One thread; the reader is used by nobody else meanwhile.
class LoopFeeder
{
public:
    enum class Step {
        waiting, ///< nothing can be done until the reader wakes, or at `deadline`
        working, ///< call again at once
        frame,   ///< the next frame
        failed,  ///< the file shows nothing
    };

    /// Frames of at most `budget` bytes are kept.
    LoopFeeder(FrameReader& reader, LoopRange range, std::size_t budget);

    /// Replaces a feeder of the same reader. Takes over its kept frames if both ranges have the same start.
    void takeOver(LoopFeeder& before);
    /// The next frame is the one on screen at `time`, due at once. From a time outside the range only that
    /// one frame comes. `decoded` are the last frames that came, in order and in the present box, and the
    /// first of them was on screen at its `position`. They are not decoded again.
    void beginAt(Nanoseconds time, std::vector<QueuedFrame> decoded = {});
    /// Does a small piece of work. On `Step::frame` the result is in `next`.
    Step step(QueuedFrame& next);
    /// As the reader's, while frames are taken from it.
    std::optional<Clock::Instant> deadline() const;

    /// Uses first frames that were decoded elsewhere, from the next wrap on. False when they are not the
    /// missing ones.
    bool adopt(std::shared_ptr<const KeptFrames> kept);
    /// No frames will be adopted: kept frames of another size than the present one are not used any more.
    /// Until then they are used, because a blurred wrap is better than a late one.
    void dropOutdated() { m_dropsOutdated = true; }

    /// The kept frames; none before the first ones are complete.
    std::shared_ptr<const KeptFrames> kept() const { return m_kept; }
    const LoopRange& range() const { return m_range; }
    /// All frames come from memory, so there is no use in queueing many of them.
    bool replaysAll() const { return m_replayed.has_value() && m_kept->complete; }
    /// A frame outside the range was requested and delivered; no frame follows it.
    bool parked() const { return m_parked; }
    /// A wrap would have to wait, because the first frames are missing in the present size.
    bool needsHead() const { return !m_collecting && headRange() != LoopRange(); }
    /// The part of the range whose frames are missing; empty when none are.
    LoopRange headRange() const;

private:
    Step replay(QueuedFrame& next);
    Step accept(const PlanarFramePtr& frame, QueuedFrame& next);
    Step endOfPictures();
    Step endOfRange(Nanoseconds end);
    Nanoseconds endOfMedia() const;
    void beginAgain();
    void startCollecting();
    void keepInterrupted();
    bool replayFrom(Nanoseconds time);
    bool continueFrom(const std::vector<QueuedFrame>& decoded, Nanoseconds time);
    FrameReader::Step read(PlanarFramePtr& frame);
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
    std::deque<PlanarFramePtr> m_decoded;  ///< the next frames, which the reader has delivered before
    PictureSize m_decodedBox;              ///< what these were scaled to fit into
    PlanarFramePtr m_last;                 ///< delivered last
    std::shared_ptr<KeptFrames> m_collecting;
    std::shared_ptr<const KeptFrames> m_kept;
    std::shared_ptr<const KeptFrames> m_adopted;
};

} // namespace stackreel
