#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace stackreel
{

/// Wakes a thread that waits; remembered when it is not waiting. Any thread.
class WakeUp
{
public:
    void notify()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_notified = true;
        }
        m_changed.notify_one();
    }

    /// Returns at once when notified since the last time, else when notified or at `until`.
    void wait(std::optional<std::chrono::steady_clock::time_point> until = std::nullopt)
    {
        std::unique_lock lock(m_mutex);
        const auto notified = [this] { return m_notified; };
        if (until)
            m_changed.wait_until(lock, *until, notified);
        else
            m_changed.wait(lock, notified);
        m_notified = false;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_notified = false;
};

} // namespace stackreel
