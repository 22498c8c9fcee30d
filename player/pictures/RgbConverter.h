#pragma once

#include "player/base/VideoFrame.h"
#include "player/pictures/PlanarFrame.h"
#include "player/pictures/RgbMatrix.h"
#include "player/pictures/VideoBuffers.h"

#include <gst/video/video.h>

namespace stackreel
{

/// Makes 32-bit pictures of planar ones, each in memory of its own. One thread.
class RgbConverter
{
public:
    /// The picture with its time; one without pixels when memory is short.
    VideoFrame convert(const PlanarFrame& frame);

private:
    GstVideoColorimetry m_colorimetry = {}; ///< unknown until the first picture
    RgbMatrix m_matrix;
    VideoBuffers m_buffers;
};

} // namespace stackreel
