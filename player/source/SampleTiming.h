#pragma once

#include "player/base/Nanoseconds.h"

#include <gst/gst.h>

namespace stackreel
{

/// Where a buffer lies on the file's time line, by the segment it belongs to; negative when it does not say.
Nanoseconds bufferTime(const GstBuffer* buffer, const GstSegment* segment);
/// The same of a buffer that passes a pad.
Nanoseconds bufferTime(const GstBuffer* buffer, GstPad* pad);
/// Where a sample lies on the file's time line; negative when it does not say.
Nanoseconds sampleTime(GstSample* sample);
/// How long a sample lasts by its own word or else by the frame rate in its caps; positive.
Nanoseconds sampleDuration(GstSample* sample);

} // namespace stackreel
