#pragma once

#include "player/base/Nanoseconds.h"

#include <chrono>

namespace stackreel
{

/// Converts the machine's time into played time and back. A plain value; the caller passes the time in.
class Clock
{
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// The played time is `played` at `now`, and runs or stands still as before.
    void set(Nanoseconds played, Instant now);
    void setRunning(bool running, Instant now);
    bool isRunning() const { return m_running; }
    Nanoseconds at(Instant now) const;
    /// When the played time will be `played`, if the clock runs until then.
    Instant when(Nanoseconds played) const;

private:
    bool m_running = false;
    Nanoseconds m_played = 0; ///< at `m_since`; constant while the clock does not run
    Instant m_since = {};
};

} // namespace stackreel
