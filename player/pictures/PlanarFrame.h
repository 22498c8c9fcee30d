#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"

#include <gst/video/video.h>

#include <cstddef>
#include <memory>

namespace stackreel
{

/// An upright picture at the size it is shown at, kept as 4:2:0 planes: at 12 bits a pixel queues and kept
/// ranges hold almost three times the frames that 32-bit pictures would allow. Never changed once made.
struct PlanarFrame {
    GstBufferPtr buffer;
    GstVideoInfo info;
    Nanoseconds time = 0;     ///< where it starts on the file's time line
    Nanoseconds duration = 0; ///< how long it stays, as far as the file says; positive

    std::size_t bytes() const { return info.size; }
};

using PlanarFramePtr = std::shared_ptr<const PlanarFrame>;

} // namespace stackreel
