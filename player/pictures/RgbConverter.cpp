#include "player/pictures/RgbConverter.h"

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
    if (!m_converter || !gst_video_info_is_equal(&frame.info, &m_planarInfo)) {
        m_planarInfo = frame.info;
        gst_video_info_set_format(&m_rgbInfo, GST_VIDEO_FORMAT_BGRx,
                                  static_cast<guint>(GST_VIDEO_INFO_WIDTH(&frame.info)),
                                  static_cast<guint>(GST_VIDEO_INFO_HEIGHT(&frame.info)));
        m_converter.reset(gst_video_converter_new(&m_planarInfo, &m_rgbInfo, nullptr));
    }
    VideoFrame converted;
    converted.seconds = toSeconds(frame.time);
    auto picture = std::make_shared<MappedPicture>(m_rgbInfo, m_buffers.acquire(m_rgbInfo));
    GstVideoFrame planar;
    if (!m_converter || !picture->mapped ||
        !gst_video_frame_map(&planar, &m_planarInfo, frame.buffer.get(), GST_MAP_READ))
        return converted;
    gst_video_converter_frame(m_converter.get(), &planar, &picture->frame);
    gst_video_frame_unmap(&planar);
    converted.pixels = static_cast<const std::byte*>(GST_VIDEO_FRAME_PLANE_DATA(&picture->frame, 0));
    converted.bytesPerLine = GST_VIDEO_FRAME_PLANE_STRIDE(&picture->frame, 0);
    converted.width = GST_VIDEO_INFO_WIDTH(&m_rgbInfo);
    converted.height = GST_VIDEO_INFO_HEIGHT(&m_rgbInfo);
    converted.owner = std::move(picture);
    return converted;
}

} // namespace stackreel
