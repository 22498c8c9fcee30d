#pragma once

#include "player/base/VideoOutput.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace stackreel
{

/// Records what a player shows. Any thread.
class CollectingOutput : public VideoOutput
{
public:
    struct Shown {
        int number = 0; ///< shown by the frame's stripes; -1 when the output was cleared
        int width = 0;
        int height = 0;
        double seconds = 0;
        std::chrono::steady_clock::time_point at;
    };

    void present(VideoFrame frame) noexcept override;
    void clear() noexcept override;

    std::vector<Shown> shown() const;
    std::vector<int> numbers() const;
    /// The number shown last; -1 when nothing is shown.
    int current() const;
    /// Waits until the condition holds for the frames shown so far. False when it does not within a minute.
    bool waitFor(const std::function<bool(const std::vector<Shown>&)>& condition) const;
    bool waitForNumber(int number) const;
    bool waitForCount(std::size_t count) const;
    void forget();

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::vector<Shown> m_shown;
};

} // namespace stackreel
