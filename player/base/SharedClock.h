#pragma once

#include "player/base/Clock.h"

#include <mutex>

namespace stackreel
{

/// The clock of a player, set by the presenter and read by the sound. Any thread.
class SharedClock
{
public:
    void set(Nanoseconds played, Clock::Instant now)
    {
        const std::lock_guard lock(m_mutex);
        m_clock.set(played, now);
    }
    void setRunning(bool running, Clock::Instant now)
    {
        const std::lock_guard lock(m_mutex);
        m_clock.setRunning(running, now);
    }
    /// As it is now.
    Clock read() const
    {
        const std::lock_guard lock(m_mutex);
        return m_clock;
    }
    bool isRunning() const { return read().isRunning(); }
    Nanoseconds at(Clock::Instant now) const { return read().at(now); }
    Clock::Instant when(Nanoseconds played) const { return read().when(played); }

private:
    mutable std::mutex m_mutex;
    Clock m_clock;
};

} // namespace stackreel
