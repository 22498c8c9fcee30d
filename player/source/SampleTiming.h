#pragma once

#include "player/base/Nanoseconds.h"

#include <gst/gst.h>

namespace stackreel
{

/// The time of a buffer on the file's time line, by its segment; negative when it has none.
Nanoseconds bufferTime(const GstBuffer* buffer, const GstSegment* segment);
/// The same for a buffer that passes a pad.
Nanoseconds bufferTime(const GstBuffer* buffer, GstPad* pad);
/// The time of a sample on the file's time line; negative when it has none.
Nanoseconds sampleTime(GstSample* sample);
/// The duration of a sample, or that of a frame by the frame rate in its caps; positive.
Nanoseconds sampleDuration(GstSample* sample);

} // namespace stackreel
