#pragma once

#include "player/source/Orientation.h"

#include <gst/video/video.h>

namespace stackreel
{

/// A size in pixels.
struct PictureSize {
    int width = 0;
    int height = 0;

    bool operator==(const PictureSize&) const = default;
};

/// The size a stored picture is scaled to, before it is turned, so that upright and with square pixels it
/// fits inside `box`. Pictures are never enlarged, because that costs less when they are drawn. Both sides
/// are even and at least 2. A side that is shorter than the box by up to two pixels is made as long as the
/// box. A side of `box` that is not positive sets no limit.
PictureSize scaledSize(const GstVideoInfo& stored, Orientation orientation, PictureSize box);

} // namespace stackreel
