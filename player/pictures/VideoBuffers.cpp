#include "player/pictures/VideoBuffers.h"

namespace stackreel
{

GstBufferPtr VideoBuffers::acquire(const GstVideoInfo& info)
{
    if (!m_pool || !gst_video_info_is_equal(&m_info, &info)) {
        release();
        m_info = info;
        m_pool.reset(gst_video_buffer_pool_new()); // already ours, not a floating reference
        const GstCapsPtr caps(gst_video_info_to_caps(&info));
        GstStructure* config = gst_buffer_pool_get_config(m_pool.get());
        gst_buffer_pool_config_set_params(config, caps.get(), static_cast<guint>(info.size), 0, 0);
        gst_buffer_pool_set_config(m_pool.get(), config);
        gst_buffer_pool_set_active(m_pool.get(), TRUE);
    }
    GstBuffer* buffer = nullptr;
    if (gst_buffer_pool_acquire_buffer(m_pool.get(), &buffer, nullptr) != GST_FLOW_OK)
        return {};
    return GstBufferPtr(buffer);
}

void VideoBuffers::release()
{
    if (!m_pool)
        return;
    gst_buffer_pool_set_active(m_pool.get(), FALSE);
    m_pool.reset();
}

} // namespace stackreel
