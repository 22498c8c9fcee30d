#include "player/engine/SeekRequests.h"

#include <utility>

namespace stackreel
{

namespace
{

constexpr std::chrono::milliseconds settleTime(60);

} // namespace

void SeekRequests::request(Seek seek, Clock::Instant now)
{
    m_pending = seek;
    m_pendingSince = now;
}

std::optional<SeekRequests::Seek> SeekRequests::begin(Clock::Instant now)
{
    if (!m_pending || (m_inFlight && (m_superseded || now - m_pendingSince < settleTime)))
        return std::nullopt;
    m_superseded = m_inFlight.has_value();
    m_inFlight = std::exchange(m_pending, std::nullopt);
    return m_inFlight;
}

std::uint64_t SeekRequests::complete()
{
    return std::exchange(m_inFlight, std::nullopt)->number;
}

std::optional<Clock::Instant> SeekRequests::deadline() const
{
    if (!m_pending || (m_inFlight && m_superseded))
        return std::nullopt;
    return m_inFlight ? m_pendingSince + settleTime : m_pendingSince;
}

} // namespace stackreel
