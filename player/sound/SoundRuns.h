#pragma once

#include "player/loop/LoopRange.h"
#include "player/loop/QueuedFrame.h"

#include <cstdint>
#include <deque>

namespace stackreel
{

/// The runs through a range, as the pictures make them and the sound follows them. A plain value.
class SoundRuns
{
public:
    struct Run {
        std::uint64_t iteration = 0;
        Nanoseconds base = 0; ///< played time at which the range's start is, or would have been, due
        Nanoseconds from = 0; ///< the position the run began at
        Nanoseconds begins(const LoopRange& range) const { return base + from - range.start; }
    };

    SoundRuns() = default;
    explicit SoundRuns(LoopRange range) : m_range(range) {}

    const LoopRange& range() const { return m_range; }
    /// Records a frame that was queued. `played` is the present played time; runs that ended before it are
    /// removed.
    void follow(const QueuedFrame& frame, Nanoseconds played);
    /// The run at a played time, or the first one known; none without any.
    const Run* at(Nanoseconds played) const;
    const Run* find(std::uint64_t iteration) const;
    /// The next run that is known; none when it is not known yet.
    const Run* after(std::uint64_t iteration) const;
    /// The position at which the run ends, as far as is known.
    Nanoseconds endOf(const Run& run) const;

private:
    LoopRange m_range;
    std::deque<Run> m_runs;
};

} // namespace stackreel
