#include "player/pictures/FrameScaler.h"

#include "player/pictures/SourceColours.h"

#include <utility>

namespace stackreel
{

namespace
{

GstVideoInfo infoOf(GstVideoFormat format, PictureSize size)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, format, static_cast<guint>(size.width), static_cast<guint>(size.height));
    return info;
}

GstVideoInfo planarInfo(PictureSize size, const GstVideoInfo& like)
{
    GstVideoInfo info = infoOf(GST_VIDEO_FORMAT_I420, size);
    if (GST_VIDEO_INFO_IS_YUV(&like)) {
        // The same colours, or the scaler could not take its short way from planes to planes.
        info.colorimetry = like.colorimetry;
        info.chroma_site = like.chroma_site;
    }
    return info;
}

constexpr GstVideoColorimetry bt709{GST_VIDEO_COLOR_RANGE_16_235, GST_VIDEO_COLOR_MATRIX_BT709,
                                    GST_VIDEO_TRANSFER_BT709, GST_VIDEO_COLOR_PRIMARIES_BT709};

/// Pictures that the colour tables are applied to. Only their size differs from that of `stored`, as long as
/// these are not R'G'B' or grey.
GstVideoInfo mapperInfo(PictureSize size, const GstVideoInfo& stored)
{
    GstVideoInfo info = infoOf(ColourMapper::takenFormat, size);
    info.colorimetry = GST_VIDEO_INFO_IS_YUV(&stored) ? stored.colorimetry : bt709;
    return info;
}

ColourMapper mapperFor(const GstVideoInfo& stored, const GstVideoInfo& scaled,
                       const std::vector<std::string>& tables)
{
    const int bits =
        GST_VIDEO_INFO_IS_YUV(&stored) ? static_cast<int>(GST_VIDEO_INFO_COMP_DEPTH(&stored, 0)) : 16;
    return {scaled.colorimetry, bits, tables};
}

void turnPlane(const GstVideoFrame& from, GstVideoFrame& to, guint plane, Orientation orientation)
{
    const PlaneView view{static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&from, plane)),
                         GST_VIDEO_FRAME_PLANE_STRIDE(&from, plane), GST_VIDEO_FRAME_COMP_WIDTH(&from, plane),
                         GST_VIDEO_FRAME_COMP_HEIGHT(&from, plane)};
    orientPlane(view, orientation, static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&to, plane)),
                GST_VIDEO_FRAME_PLANE_STRIDE(&to, plane));
}

/// Maps both pictures, calls `work` with them, and returns the target; none when a picture cannot be mapped.
template <typename Work>
GstBufferPtr filled(GstBufferPtr target, const GstVideoInfo& targetInfo, GstBuffer* source,
                    const GstVideoInfo& sourceInfo, const Work& work)
{
    GstVideoFrame from;
    GstVideoFrame to;
    if (!target || !gst_video_frame_map(&from, &sourceInfo, source, GST_MAP_READ))
        return {};
    const bool mapped = gst_video_frame_map(&to, &targetInfo, target.get(), GST_MAP_WRITE);
    if (mapped) {
        work(from, to);
        gst_video_frame_unmap(&to);
    }
    gst_video_frame_unmap(&from);
    return mapped ? std::move(target) : nullptr;
}

} // namespace

PlanarFramePtr FrameScaler::scale(GstSample* sample, Orientation orientation, Nanoseconds time,
                                  Nanoseconds duration)
{
    GstCaps* caps = gst_sample_get_caps(sample);
    GstBuffer* picture = gst_sample_get_buffer(sample);
    if (!caps || !picture || !read(caps))
        return {};
    prepare(scaledSize(m_storedInfo, orientation, m_box));
    auto frame = std::make_shared<PlanarFrame>();
    const GstBufferPtr whole = m_deinterlacer.deinterlace(picture, m_decodedInfo);
    frame->buffer = whole ? convert(whole.get()) : nullptr;
    if (frame->buffer && m_mapper)
        frame->buffer = map(frame->buffer.get());
    frame->info = m_smallInfo;
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

/// False when the pictures cannot be shown. Pictures mostly come with the caps of the one before.
bool FrameScaler::read(GstCaps* caps)
{
    if (caps == m_caps.get())
        return true;
    GstVideoInfo decoded;
    if (!gst_video_info_from_caps(&decoded, caps))
        return false;
    SourceColours colours = sourceColours(caps, decoded);
    GstVideoInfo stored = decoded;
    stored.colorimetry = colours.colorimetry;
    // Neither matters for a single picture, and converters refuse pictures that differ in them.
    stored.fps_n = 0;
    stored.fps_d = 1;
    stored.interlace_mode = GST_VIDEO_INTERLACE_MODE_PROGRESSIVE;
    if (m_converter && !gst_video_info_is_equal(&stored, &m_storedInfo))
        m_converter.reset();
    m_caps.reset(gst_caps_ref(caps));
    m_decodedInfo = decoded;
    m_storedInfo = stored;
    m_tables = std::move(colours.tables);
    return true;
}

void FrameScaler::prepare(PictureSize size)
{
    if (m_converter &&
        size == PictureSize{GST_VIDEO_INFO_WIDTH(&m_scaledInfo), GST_VIDEO_INFO_HEIGHT(&m_scaledInfo)})
        return;
    m_smallInfo = planarInfo(size, m_storedInfo);
    m_scaledInfo = m_smallInfo;
    m_mapper.reset();
    if (!m_tables.empty()) {
        m_scaledInfo = mapperInfo(size, m_storedInfo);
        m_smallInfo.colorimetry = bt709;
        m_mapper = mapperFor(m_storedInfo, m_scaledInfo, m_tables);
    }
    GstStructure* options = gst_structure_new(
        "options", GST_VIDEO_CONVERTER_OPT_RESAMPLER_METHOD, GST_TYPE_VIDEO_RESAMPLER_METHOD,
        GST_VIDEO_RESAMPLER_METHOD_LINEAR, GST_VIDEO_CONVERTER_OPT_CHROMA_RESAMPLER_METHOD,
        GST_TYPE_VIDEO_RESAMPLER_METHOD, GST_VIDEO_RESAMPLER_METHOD_LINEAR, nullptr);
    m_converter.reset(gst_video_converter_new(&m_storedInfo, &m_scaledInfo, options));
}

GstBufferPtr FrameScaler::convert(GstBuffer* stored)
{
    if (!m_converter)
        return {};
    return filled(m_scaled.acquire(m_scaledInfo), m_scaledInfo, stored, m_storedInfo,
                  [this](const GstVideoFrame& from, GstVideoFrame& to) {
                      gst_video_converter_frame(m_converter.get(), &from, &to);
                  });
}

GstBufferPtr FrameScaler::map(GstBuffer* scaled)
{
    return filled(m_mapped.acquire(m_smallInfo), m_smallInfo, scaled, m_scaledInfo,
                  [this](const GstVideoFrame& from, GstVideoFrame& to) { m_mapper->map(from, to); });
}

GstBufferPtr FrameScaler::turn(GstBuffer* small, Orientation orientation)
{
    PictureSize size{GST_VIDEO_INFO_WIDTH(&m_smallInfo), GST_VIDEO_INFO_HEIGHT(&m_smallInfo)};
    if (orientation.swapsSides())
        std::swap(size.width, size.height);
    m_uprightInfo = planarInfo(size, m_smallInfo);
    return filled(m_upright.acquire(m_uprightInfo), m_uprightInfo, small, m_smallInfo,
                  [orientation](const GstVideoFrame& from, GstVideoFrame& to) {
                      for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&from); ++plane)
                          turnPlane(from, to, plane, orientation);
                  });
}

} // namespace stackreel
