#include "player/pictures/FrameScaler.h"

namespace stackreel
{

namespace
{

GstVideoInfo planarInfo(int width, int height, const GstVideoInfo& like)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, static_cast<guint>(width),
                              static_cast<guint>(height));
    if (GST_VIDEO_INFO_IS_YUV(&like)) {
        // The same colours, or the scaler could not take its short way from planes to planes.
        info.colorimetry = like.colorimetry;
        info.chroma_site = like.chroma_site;
    }
    return info;
}

} // namespace

PlanarFramePtr FrameScaler::scale(GstSample* sample, Orientation orientation, Nanoseconds time,
                                  Nanoseconds duration)
{
    GstVideoInfo stored;
    GstCaps* caps = gst_sample_get_caps(sample);
    GstBuffer* picture = gst_sample_get_buffer(sample);
    if (!caps || !picture || !gst_video_info_from_caps(&stored, caps))
        return {};
    // Neither matters for a single picture, and converters refuse pictures that differ in them.
    stored.fps_n = 0;
    stored.fps_d = 1;
    stored.interlace_mode = GST_VIDEO_INTERLACE_MODE_PROGRESSIVE;
    prepare(stored, scaledSize(stored, orientation, m_box));
    auto frame = std::make_shared<PlanarFrame>();
    frame->buffer = convert(picture);
    frame->info = m_scaledInfo;
    if (frame->buffer && orientation != Orientation()) {
        frame->buffer = turn(frame->buffer.get(), orientation);
        frame->info = m_uprightInfo;
    }
    if (!frame->buffer)
        return {};
    frame->time = time;
    frame->duration = duration;
    return frame;
}

void FrameScaler::prepare(const GstVideoInfo& stored, PictureSize size)
{
    if (m_converter && gst_video_info_is_equal(&stored, &m_storedInfo) &&
        size == PictureSize{GST_VIDEO_INFO_WIDTH(&m_scaledInfo), GST_VIDEO_INFO_HEIGHT(&m_scaledInfo)})
        return;
    m_storedInfo = stored;
    m_scaledInfo = planarInfo(size.width, size.height, stored);
    GstStructure* options = gst_structure_new(
        "options", GST_VIDEO_CONVERTER_OPT_RESAMPLER_METHOD, GST_TYPE_VIDEO_RESAMPLER_METHOD,
        GST_VIDEO_RESAMPLER_METHOD_LINEAR, GST_VIDEO_CONVERTER_OPT_CHROMA_RESAMPLER_METHOD,
        GST_TYPE_VIDEO_RESAMPLER_METHOD, GST_VIDEO_RESAMPLER_METHOD_LINEAR, nullptr);
    m_converter.reset(gst_video_converter_new(&m_storedInfo, &m_scaledInfo, options));
}

GstBufferPtr FrameScaler::convert(GstBuffer* stored)
{
    GstBufferPtr target = m_converter ? m_scaled.acquire(m_scaledInfo) : nullptr;
    GstVideoFrame from;
    GstVideoFrame to;
    if (!target || !gst_video_frame_map(&from, &m_storedInfo, stored, GST_MAP_READ))
        return {};
    const bool mapped = gst_video_frame_map(&to, &m_scaledInfo, target.get(), GST_MAP_WRITE);
    if (mapped) {
        gst_video_converter_frame(m_converter.get(), &from, &to);
        gst_video_frame_unmap(&to);
    }
    gst_video_frame_unmap(&from);
    return mapped ? std::move(target) : nullptr;
}

GstBufferPtr FrameScaler::turn(GstBuffer* scaled, Orientation orientation)
{
    int width = GST_VIDEO_INFO_WIDTH(&m_scaledInfo);
    int height = GST_VIDEO_INFO_HEIGHT(&m_scaledInfo);
    if (orientation.swapsSides())
        std::swap(width, height);
    m_uprightInfo = planarInfo(width, height, m_scaledInfo);
    GstBufferPtr target = m_upright.acquire(m_uprightInfo);
    GstVideoFrame from;
    GstVideoFrame to;
    if (!target || !gst_video_frame_map(&from, &m_scaledInfo, scaled, GST_MAP_READ))
        return {};
    const bool mapped = gst_video_frame_map(&to, &m_uprightInfo, target.get(), GST_MAP_WRITE);
    for (guint plane = 0; mapped && plane < GST_VIDEO_FRAME_N_PLANES(&from); ++plane) {
        const PlaneView view{static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&from, plane)),
                             GST_VIDEO_FRAME_PLANE_STRIDE(&from, plane),
                             GST_VIDEO_FRAME_COMP_WIDTH(&from, plane),
                             GST_VIDEO_FRAME_COMP_HEIGHT(&from, plane)};
        orientPlane(view, orientation, static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&to, plane)),
                    GST_VIDEO_FRAME_PLANE_STRIDE(&to, plane));
    }
    if (mapped)
        gst_video_frame_unmap(&to);
    gst_video_frame_unmap(&from);
    return mapped ? std::move(target) : nullptr;
}

} // namespace stackreel
