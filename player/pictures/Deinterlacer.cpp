#include "player/pictures/Deinterlacer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace stackreel
{

namespace
{

struct Plane {
    guint8* data;
    std::ptrdiff_t stride;
    std::size_t lineBytes;
    int height;

    guint8* line(int row) const { return data + row * stride; }
};

Plane planeOf(const GstVideoFrame& frame, guint index)
{
    gint components[GST_VIDEO_MAX_COMPONENTS] = {-1};
    gst_video_format_info_component(frame.info.finfo, index, components);
    const auto component = static_cast<guint>(components[0]);
    return {static_cast<guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, index)),
            GST_VIDEO_FRAME_PLANE_STRIDE(&frame, index),
            static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_WIDTH(&frame, component)) *
                static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component)),
            GST_VIDEO_FRAME_COMP_HEIGHT(&frame, component)};
}

/// Bytes per sample; 0 for formats whose samples are not whole bytes or words of this machine.
int sampleBytes(const GstVideoFormatInfo* format)
{
    if (GST_VIDEO_FORMAT_INFO_IS_COMPLEX(format) || GST_VIDEO_FORMAT_INFO_IS_TILED(format))
        return 0;
    if (GST_VIDEO_FORMAT_INFO_DEPTH(format, 0) == 8)
        return 1;
    // In other formats several samples share a word.
    const guint bits = GST_VIDEO_FORMAT_INFO_DEPTH(format, 0);
    const bool words = bits > 8 && bits + GST_VIDEO_FORMAT_INFO_SHIFT(format, 2) <= 16;
    const bool native = GST_VIDEO_FORMAT_INFO_IS_LE(format) == (G_BYTE_ORDER == G_LITTLE_ENDIAN);
    return words && native ? 2 : 0;
}

/// Whether pictures with this information may be interlaced, and can be converted.
bool hasInterlacedPictures(const GstVideoInfo& info)
{
    const GstVideoInterlaceMode mode = GST_VIDEO_INFO_INTERLACE_MODE(&info);
    const bool mayBe = mode == GST_VIDEO_INTERLACE_MODE_INTERLEAVED || mode == GST_VIDEO_INTERLACE_MODE_MIXED;
    return mayBe && sampleBytes(info.finfo) > 0;
}

/// The median of the three lines, for each sample.
template <typename Sample>
void limitLine(const guint8* above, const guint8* line, const guint8* below, guint8* result,
               std::size_t bytes)
{
    const auto* one = reinterpret_cast<const Sample*>(above);
    const auto* other = reinterpret_cast<const Sample*>(below);
    const auto* from = reinterpret_cast<const Sample*>(line);
    auto* to = reinterpret_cast<Sample*>(result);
    for (std::size_t index = 0; index < bytes / sizeof(Sample); ++index)
        to[index] = std::max(std::min(one[index], other[index]),
                             std::min(from[index], std::max(one[index], other[index])));
}

void deinterlacePlane(const Plane& from, const Plane& to, int firstLine, int bytesPerSample)
{
    const auto limit = bytesPerSample == 1 ? limitLine<guint8> : limitLine<guint16>;
    for (int row = 0; row < from.height; ++row) {
        if (row % 2 == firstLine) {
            std::memcpy(to.line(row), from.line(row), from.lineBytes);
            continue;
        }
        const guint8* above = from.line(row > 0 ? row - 1 : std::min(1, from.height - 1));
        const guint8* below = row + 1 < from.height ? from.line(row + 1) : above;
        limit(above, from.line(row), below, to.line(row), from.lineBytes);
    }
}

} // namespace

GstBufferPtr Deinterlacer::deinterlace(GstBuffer* picture, const GstVideoInfo& info)
{
    GstVideoFrame frame;
    if (!hasInterlacedPictures(info) || !gst_video_frame_map(&frame, &info, picture, GST_MAP_READ))
        return GstBufferPtr(gst_buffer_ref(picture));
    GstBufferPtr result =
        GST_VIDEO_FRAME_IS_INTERLACED(&frame) ? convert(frame, info) : GstBufferPtr(gst_buffer_ref(picture));
    gst_video_frame_unmap(&frame);
    return result;
}

GstBufferPtr Deinterlacer::convert(const GstVideoFrame& picture, const GstVideoInfo& info)
{
    GstBufferPtr result = m_buffers.acquire(info);
    GstVideoFrame made;
    if (!result || !gst_video_frame_map(&made, &info, result.get(), GST_MAP_WRITE))
        return {};
    const int firstLine = GST_VIDEO_FRAME_IS_TFF(&picture) ? 0 : 1;
    for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&picture); ++plane)
        deinterlacePlane(planeOf(picture, plane), planeOf(made, plane), firstLine, sampleBytes(info.finfo));
    gst_video_frame_unmap(&made);
    return result;
}

} // namespace stackreel
