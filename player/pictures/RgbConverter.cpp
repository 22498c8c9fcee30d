#include "player/pictures/RgbConverter.h"

#include "player/base/Handover.h"

namespace stackreel
{

namespace
{

/// Keeps a picture mapped as long as somebody shows it.
struct MappedPicture {
    MappedPicture(const GstVideoInfo& info, GstBufferPtr memory) : buffer(std::move(memory))
    {
        mapped = buffer && gst_video_frame_map(&frame, &info, buffer.get(), GST_MAP_READWRITE);
    }
    MappedPicture(const MappedPicture&) = delete;
    MappedPicture& operator=(const MappedPicture&) = delete;
    ~MappedPicture()
    {
        const Handover handover;
        if (mapped)
            gst_video_frame_unmap(&frame);
    }

    GstBufferPtr buffer;
    GstVideoFrame frame = {};
    bool mapped = false;
};

} // namespace

VideoFrame RgbConverter::convert(const PlanarFrame& frame)
{
    if (!gst_video_colorimetry_is_equal(&frame.info.colorimetry, &m_colorimetry)) {
        m_colorimetry = frame.info.colorimetry;
        m_matrix = RgbMatrix(m_colorimetry);
    }
    GstVideoInfo rgb;
    gst_video_info_set_format(&rgb, GST_VIDEO_FORMAT_BGRx,
                              static_cast<guint>(GST_VIDEO_INFO_WIDTH(&frame.info)),
                              static_cast<guint>(GST_VIDEO_INFO_HEIGHT(&frame.info)));
    VideoFrame converted;
    converted.seconds = toSeconds(frame.time);
    auto picture = std::make_shared<MappedPicture>(rgb, m_buffers.acquire(rgb));
    // Its memory may be that of a picture that another thread has shown and released.
    const Handover handover;
    GstVideoFrame planar;
    if (!picture->mapped || !gst_video_frame_map(&planar, &frame.info, frame.buffer.get(), GST_MAP_READ))
        return converted;
    m_matrix.convert(planar, picture->frame);
    gst_video_frame_unmap(&planar);
    converted.pixels = static_cast<const std::byte*>(GST_VIDEO_FRAME_PLANE_DATA(&picture->frame, 0));
    converted.bytesPerLine = GST_VIDEO_FRAME_PLANE_STRIDE(&picture->frame, 0);
    converted.width = GST_VIDEO_INFO_WIDTH(&rgb);
    converted.height = GST_VIDEO_INFO_HEIGHT(&rgb);
    converted.owner = std::move(picture);
    return converted;
}

} // namespace stackreel
