#pragma once

#include "player/base/VideoOutput.h"

#include <mutex>
#include <utility>
#include <vector>

namespace stackreel
{

/// An output that keeps all pictures. Any thread.
class PictureOutput : public VideoOutput
{
public:
    void present(VideoFrame frame) noexcept override
    {
        const std::lock_guard lock(m_mutex);
        m_pictures.push_back(std::move(frame));
    }
    void clear() noexcept override {}

    std::vector<VideoFrame> pictures() const
    {
        const std::lock_guard lock(m_mutex);
        return m_pictures;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<VideoFrame> m_pictures;
};

} // namespace stackreel
