#include "player/base/Clock.h"

namespace stackreel
{

void Clock::set(Nanoseconds played, Instant now)
{
    m_played = played;
    m_since = now;
}

void Clock::setRunning(bool running, Instant now)
{
    set(at(now), now);
    m_running = running;
}

Nanoseconds Clock::at(Instant now) const
{
    if (!m_running)
        return m_played;
    return m_played + std::chrono::duration_cast<std::chrono::nanoseconds>(now - m_since).count();
}

Clock::Instant Clock::when(Nanoseconds played) const
{
    return m_since + std::chrono::nanoseconds(played - m_played);
}

} // namespace stackreel
