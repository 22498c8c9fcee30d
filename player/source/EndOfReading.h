#pragma once

#include "player/base/Clock.h"
#include "player/source/DecodePipeline.h"

#include <chrono>
#include <optional>

namespace stackreel
{

/// Tells when nothing more is to be expected of a pipeline. An error may overtake the samples that are on
/// their way through the decoder. It mostly has the end of the stream follow them, but not where the decoder
/// itself gave up. So reading that broke off is over when nothing came for a while. One thread.
class EndOfReading
{
public:
    explicit EndOfReading(std::chrono::nanoseconds quiet) : m_quiet(quiet) {}

    /// Whether nothing follows what can be pulled by now. To be asked before pulling: a sample that arrives
    /// in between must not be taken for missing.
    bool isReached(const DecodePipeline& pipeline)
    {
        if (pipeline.atEnd() || pipeline.isHopeless())
            return true;
        if (!pipeline.failed())
            return false;
        const auto now = std::chrono::steady_clock::now();
        if (!m_deadline)
            m_deadline = now + m_quiet;
        return now >= *m_deadline;
    }
    /// A sample came, or reading begins anew.
    void postpone() { m_deadline.reset(); }
    /// When to ask again although nobody woke; none but while it is unclear whether samples are still to come
    /// of what broke off.
    std::optional<Clock::Instant> deadline() const { return m_deadline; }

private:
    std::chrono::nanoseconds m_quiet;
    std::optional<Clock::Instant> m_deadline;
};

} // namespace stackreel
