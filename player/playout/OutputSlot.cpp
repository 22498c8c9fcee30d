#include "player/playout/OutputSlot.h"

#include <utility>

namespace stackreel
{

bool OutputSlot::replace(std::shared_ptr<VideoOutput> output)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_output == output)
            return false;
        std::swap(m_output, output);
        if (m_output && m_shown.pixels)
            m_output->present(m_shown);
    }
    if (output)
        output->clear();
    return true;
}

void OutputSlot::show(const VideoFrame& picture)
{
    const std::lock_guard lock(m_mutex);
    m_shown = picture;
    if (!m_output)
        return;
    if (picture.pixels)
        m_output->present(picture);
    else
        m_output->clear();
}

} // namespace stackreel
