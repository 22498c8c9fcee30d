#pragma once

#include "player/base/Clock.h"
#include "player/source/DecodePipeline.h"

#include <chrono>
#include <optional>

namespace stackreel
{

/// Whether a pipeline delivers no more samples. An error may overtake samples that are still in the decoder.
/// The end of the stream mostly follows them, but not where the decoder itself failed. After an error the
/// stream has therefore ended when no sample came for a while. So it has after a demuxer stopped without an
/// error. One thread.
class EndOfStream
{
public:
    explicit EndOfStream(std::chrono::nanoseconds quiet) : m_timeout(quiet) {}

    /// Whether nothing follows what can be pulled now. Call it before pulling: a sample may arrive in
    /// between.
    bool isReached(const DecodePipeline& pipeline)
    {
        if (pipeline.atEnd() || pipeline.lacksStream())
            return true;
        const auto now = std::chrono::steady_clock::now();
        const bool isIdle = !pipeline.failed() && pipeline.hasIdleDemuxer();
        if (!pipeline.failed() && !isIdle) {
            m_deadline.reset();
            m_nextLook = pipeline.isOpening() ? std::optional(now + std::chrono::seconds(1)) : std::nullopt;
            return false;
        }
        if (!m_deadline)
            m_deadline = now + (isIdle ? idleTime : m_timeout);
        return now >= *m_deadline;
    }
    /// A sample came, or reading starts again.
    void postpone() { m_deadline.reset(); }
    /// When to ask again without a wake: while samples may follow an error or an idle demuxer, and during the
    /// opening.
    std::optional<Clock::Instant> deadline() const { return m_deadline ? m_deadline : m_nextLook; }

private:
    /// A demuxer that was just added is idle for a moment.
    static constexpr std::chrono::nanoseconds idleTime = std::chrono::seconds(2);

    std::chrono::nanoseconds m_timeout;
    std::optional<Clock::Instant> m_deadline;
    std::optional<Clock::Instant> m_nextLook; ///< nothing wakes the thread when a demuxer becomes idle
};

} // namespace stackreel
