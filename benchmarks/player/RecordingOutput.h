#pragma once

#include "player/base/VideoOutput.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace stackreel
{

/// Records each frame that a player shows, with the time. Any thread.
class RecordingOutput : public VideoOutput
{
public:
    struct Shown {
        double seconds; ///< the frame's time in the file
        std::chrono::steady_clock::time_point at;
    };

    void present(VideoFrame frame) noexcept override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_shown.push_back({frame.seconds, std::chrono::steady_clock::now()});
        }
        m_changed.notify_all();
    }
    void clear() noexcept override {}

    /// Waits until `condition` is true for the frames shown so far, for at most `limit`.
    template <typename Condition>
    bool waitFor(Condition condition, std::chrono::seconds limit)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, limit, [&] { return condition(m_shown); });
    }
    std::vector<Shown> take()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_shown, {});
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Shown> m_shown;
};

} // namespace stackreel
