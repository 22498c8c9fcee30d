#include "player/source/SampleTiming.h"

#include <gst/video/video.h>

namespace stackreel
{

Nanoseconds bufferTime(const GstBuffer* buffer, const GstSegment* segment)
{
    if (!segment || !buffer || segment->format != GST_FORMAT_TIME || !GST_BUFFER_PTS_IS_VALID(buffer))
        return -1;
    guint64 time = 0;
    const int sign = gst_segment_to_stream_time_full(segment, GST_FORMAT_TIME, GST_BUFFER_PTS(buffer), &time);
    return sign > 0 ? static_cast<Nanoseconds>(time) : -1;
}

Nanoseconds bufferTime(const GstBuffer* buffer, GstPad* pad)
{
    GstEvent* event = gst_pad_get_sticky_event(pad, GST_EVENT_SEGMENT, 0);
    if (!event)
        return -1;
    const GstSegment* segment = nullptr;
    gst_event_parse_segment(event, &segment);
    const Nanoseconds time = bufferTime(buffer, segment);
    gst_event_unref(event);
    return time;
}

Nanoseconds sampleTime(GstSample* sample)
{
    return bufferTime(gst_sample_get_buffer(sample), gst_sample_get_segment(sample));
}

Nanoseconds sampleDuration(GstSample* sample)
{
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    if (buffer && GST_BUFFER_DURATION_IS_VALID(buffer) && GST_BUFFER_DURATION(buffer) > 0)
        return static_cast<Nanoseconds>(GST_BUFFER_DURATION(buffer));
    GstVideoInfo info;
    if (gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) && info.fps_n > 0 && info.fps_d > 0)
        return second * info.fps_d / info.fps_n;
    return second / 30;
}

} // namespace stackreel
