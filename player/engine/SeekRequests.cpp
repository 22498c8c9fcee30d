#include "player/engine/SeekRequests.h"

#include <utility>

namespace stackreel
{

namespace
{

constexpr std::chrono::milliseconds patience(60);

} // namespace

void SeekRequests::want(Seek seek, Clock::Instant now)
{
    m_wanted = seek;
    m_wantedSince = now;
}

std::optional<SeekRequests::Seek> SeekRequests::begin(Clock::Instant now)
{
    if (!m_wanted || (m_flying && (m_superseded || now - m_wantedSince < patience)))
        return std::nullopt;
    m_superseded = m_flying.has_value();
    m_flying = std::exchange(m_wanted, std::nullopt);
    return m_flying;
}

std::uint64_t SeekRequests::land()
{
    return std::exchange(m_flying, std::nullopt)->number;
}

std::optional<Clock::Instant> SeekRequests::deadline() const
{
    if (!m_wanted || (m_flying && m_superseded))
        return std::nullopt;
    return m_flying ? m_wantedSince + patience : m_wantedSince;
}

} // namespace stackreel
