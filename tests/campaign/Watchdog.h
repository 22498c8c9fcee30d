#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace stackreel
{

/// Ends the process when one step takes too long, or when the process uses too much memory. Prints why.
class Watchdog
{
public:
    /// The exit status of a process that was ended.
    static constexpr int tookTooLong = 40;
    static constexpr int usedTooMuchMemory = 41;

    Watchdog(std::chrono::seconds mostTime, double mostMemory);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Ends the current step and begins another. `name` is a string literal.
    void begin(const char* name);
    /// The most memory that the process has had since the last call, in MiB; measured every 10 ms.
    double takePeak() { return m_peak.exchange(0); }

private:
    void watch();
    [[noreturn]] void end(const char* reason, int status) const;

    std::chrono::seconds m_mostTime;
    double m_mostMemory;
    std::atomic<double> m_peak = 0;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    const char* m_step = "start";
    std::chrono::steady_clock::time_point m_began = std::chrono::steady_clock::now();
    bool m_stopped = false;
    std::thread m_thread;
};

} // namespace stackreel
