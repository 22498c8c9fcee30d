#include "tests/player/CollectingOutput.h"

#include "tests/player/MarkedClip.h"

namespace stackreel
{

void CollectingOutput::present(VideoFrame frame) noexcept
{
    const auto now = std::chrono::steady_clock::now();
    {
        const std::lock_guard lock(m_mutex);
        m_shown.push_back({numberIn(frame), frame.width, frame.height, frame.seconds, now});
    }
    m_changed.notify_all();
}

void CollectingOutput::clear() noexcept
{
    {
        const std::lock_guard lock(m_mutex);
        m_shown.push_back({-1, 0, 0, 0, std::chrono::steady_clock::now()});
    }
    m_changed.notify_all();
}

std::vector<CollectingOutput::Shown> CollectingOutput::shown() const
{
    const std::lock_guard lock(m_mutex);
    return m_shown;
}

std::vector<int> CollectingOutput::numbers() const
{
    std::vector<int> numbers;
    for (const Shown& shown : this->shown())
        numbers.push_back(shown.number);
    return numbers;
}

int CollectingOutput::current() const
{
    const std::lock_guard lock(m_mutex);
    return m_shown.empty() ? -1 : m_shown.back().number;
}

bool CollectingOutput::waitFor(const std::function<bool(const std::vector<Shown>&)>& condition) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::minutes(1), [&] { return condition(m_shown); });
}

bool CollectingOutput::waitForNumber(int number) const
{
    return waitFor([number](const auto& shown) { return !shown.empty() && shown.back().number == number; });
}

bool CollectingOutput::waitForCount(std::size_t count) const
{
    return waitFor([count](const auto& shown) { return shown.size() >= count; });
}

void CollectingOutput::forget()
{
    const std::lock_guard lock(m_mutex);
    m_shown.clear();
}

} // namespace stackreel
