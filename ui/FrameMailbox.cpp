#include "ui/FrameMailbox.h"

#include <utility>

namespace stackreel
{

void FrameMailbox::present(VideoFrame frame) noexcept
{
    put(std::move(frame));
}

void FrameMailbox::clear() noexcept
{
    put({});
}

void FrameMailbox::put(VideoFrame frame)
{
    // Declared before the guard, so that the replaced frame is released after the mutex is unlocked.
    std::optional<VideoFrame> replaced(std::move(frame));
    const std::lock_guard guard(m_lock);
    if (!m_changed)
        return;
    m_latest.swap(replaced);
    if (!replaced)
        m_changed();
}

std::optional<VideoFrame> FrameMailbox::take()
{
    const std::lock_guard guard(m_lock);
    return std::exchange(m_latest, std::nullopt);
}

void FrameMailbox::close()
{
    std::optional<VideoFrame> untaken;
    const std::lock_guard guard(m_lock);
    m_changed = nullptr;
    m_latest.swap(untaken);
}

} // namespace stackreel
