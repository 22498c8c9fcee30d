#include "tests/campaign/Watchdog.h"

#include "benchmarks/player/Measuring.h"

#include <unistd.h>

#include <cstdio>

namespace stackreel
{

Watchdog::Watchdog(std::chrono::seconds mostTime, double mostMemory)
    : m_mostTime(mostTime), m_mostMemory(mostMemory), m_thread([this] { watch(); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Watchdog::begin(const char* name)
{
    const std::lock_guard lock(m_mutex);
    m_step = name;
    m_began = std::chrono::steady_clock::now();
}

void Watchdog::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_changed.wait_for(lock, std::chrono::milliseconds(10), [this] { return m_stopped; })) {
        const double memory = residentMemory();
        if (memory > m_peak)
            m_peak = memory;
        if (memory > m_mostMemory)
            end("memory", usedTooMuchMemory);
        if (std::chrono::steady_clock::now() - m_began > m_mostTime)
            end("time", tookTooLong);
    }
}

void Watchdog::end(const char* reason, int status) const
{
    std::printf("over\t%s\t%s\n", reason, m_step);
    std::fflush(stdout);
    ::_exit(status);
}

} // namespace stackreel
