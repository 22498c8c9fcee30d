#pragma once

#include "player/base/VideoFrame.h"
#include "player/pictures/PlanarFrame.h"
#include "player/pictures/VideoBuffers.h"

#include <gst/video/video.h>

#include <memory>

namespace stackreel
{

/// Makes 32-bit pictures of planar ones, each in memory of its own. One thread.
class RgbConverter
{
public:
    /// The picture with its time; one without pixels when memory is short.
    VideoFrame convert(const PlanarFrame& frame);

private:
    struct FreeConverter {
        void operator()(GstVideoConverter* converter) const { gst_video_converter_free(converter); }
    };

    GstVideoInfo m_planarInfo = {};
    GstVideoInfo m_rgbInfo = {};
    std::unique_ptr<GstVideoConverter, FreeConverter> m_converter;
    VideoBuffers m_buffers;
};

} // namespace stackreel
