#pragma once

#include "player/base/GStreamer.h"
#include "player/pictures/VideoBuffers.h"

#include <gst/video/video.h>

namespace stackreel
{

/// Makes pictures of one moment from interlaced ones. The lines of the first field stay, as in an export.
/// Those of the other field are limited to the range between the lines above and below: they keep what does
/// not move, and lose the comb where something does.
///
/// Needs no picture but the one at hand, so neither the number of pictures nor their times change, and a
/// picture is the same however it was reached. One thread.
class Deinterlacer
{
public:
    /// The picture itself if it is not interlaced, or if its format is none that decoders of interlaced video
    /// have. `info` is that of the caps, with the interlace mode. None when memory is short.
    GstBufferPtr deinterlace(GstBuffer* picture, const GstVideoInfo& info);

private:
    GstBufferPtr convert(const GstVideoFrame& picture, const GstVideoInfo& info);

    VideoBuffers m_buffers;
};

} // namespace stackreel
