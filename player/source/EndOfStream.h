#pragma once

#include "player/base/Clock.h"
#include "player/source/DecodePipeline.h"

#include <chrono>
#include <optional>

namespace stackreel
{

/// Whether a pipeline delivers no more samples. An error may overtake samples that are still in the decoder.
/// The end of the stream mostly follows them, but not where the decoder itself failed. After an error the
/// stream has therefore ended when no sample came for a while. One thread.
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
        if (!pipeline.failed())
            return false;
        const auto now = std::chrono::steady_clock::now();
        if (!m_deadline)
            m_deadline = now + m_timeout;
        return now >= *m_deadline;
    }
    /// A sample came, or reading starts again.
    void postpone() { m_deadline.reset(); }
    /// When to ask again without a wake; none unless an error came and samples may still follow.
    std::optional<Clock::Instant> deadline() const { return m_deadline; }

private:
    std::chrono::nanoseconds m_timeout;
    std::optional<Clock::Instant> m_deadline;
};

} // namespace stackreel
