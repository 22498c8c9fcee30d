#pragma once

#include "player/base/GStreamer.h"

#include <gst/video/video.h>

namespace stackreel
{

/// Recycled memory for pictures of one format and size. Memory fresh from the system would be zeroed page by
/// page for every picture, which at 60 frames a second costs a noticeable part of a core.
///
/// One thread asks for buffers; they may be released on any, even after this object is gone.
class VideoBuffers
{
public:
    VideoBuffers() = default;
    VideoBuffers(const VideoBuffers&) = delete;
    VideoBuffers& operator=(const VideoBuffers&) = delete;
    ~VideoBuffers() { release(); }

    /// A buffer for a picture of `info`; none when memory is short. Asking for another format or size drops
    /// what was recycled so far.
    GstBufferPtr acquire(const GstVideoInfo& info);
    /// Gives unused memory back to the system.
    void release();

private:
    GstBufferPoolPtr m_pool;
    GstVideoInfo m_info = {};
};

} // namespace stackreel
