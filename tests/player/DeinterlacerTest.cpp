#include "player/pictures/Deinterlacer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

using namespace stackreel;

namespace
{

GstVideoInfo pictures(GstVideoFormat format, GstVideoInterlaceMode mode, int width = 8, int height = 6)
{
    ensureGStreamer();
    GstVideoInfo info;
    gst_video_info_set_interlaced_format(&info, format, mode, static_cast<guint>(width),
                                         static_cast<guint>(height));
    return info;
}

/// A picture whose planes are filled row by row: with words where samples have more than 8 bits.
GstBufferPtr pictureOf(const GstVideoInfo& info, const std::function<int(int)>& valueOfRow)
{
    GstBufferPtr buffer(gst_buffer_new_allocate(nullptr, info.size, nullptr));
    GstVideoFrame frame;
    if (!gst_video_frame_map(&frame, &info, buffer.get(), GST_MAP_WRITE))
        return {};
    for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&frame); ++plane)
        for (int row = 0; row < GST_VIDEO_FRAME_COMP_HEIGHT(&frame, plane); ++row) {
            auto* line = static_cast<guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane)) +
                         row * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
            const int value = valueOfRow(row);
            for (int x = 0; x < GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane); ++x)
                line[x] =
                    static_cast<guint8>(GST_VIDEO_INFO_COMP_DEPTH(&info, 0) > 8 ? value >> x % 2 * 8 : value);
        }
    gst_video_frame_unmap(&frame);
    return buffer;
}

/// The first sample of each row of a plane.
std::vector<int> rowsOf(const GstBufferPtr& picture, const GstVideoInfo& info, guint plane = 0)
{
    GstVideoFrame frame;
    if (!picture || !gst_video_frame_map(&frame, &info, picture.get(), GST_MAP_READ))
        return {};
    std::vector<int> rows;
    for (int row = 0; row < GST_VIDEO_FRAME_COMP_HEIGHT(&frame, plane); ++row) {
        const auto* line = static_cast<const guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane)) +
                           row * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
        rows.push_back(GST_VIDEO_INFO_COMP_DEPTH(&info, 0) > 8 ? line[0] | line[1] << 8 : line[0]);
    }
    gst_video_frame_unmap(&frame);
    return rows;
}

int combedRow(int row)
{
    return row % 2 == 0 ? 200 : 50;
}

} // namespace

TEST(Deinterlacer, KeepsTheFirstFieldOfACombedPicture)
{
    Deinterlacer deinterlacer;
    GstVideoInfo info = pictures(GST_VIDEO_FORMAT_I420, GST_VIDEO_INTERLACE_MODE_INTERLEAVED, 8, 12);
    const GstBufferPtr picture = pictureOf(info, combedRow);
    GST_VIDEO_INFO_FIELD_ORDER(&info) = GST_VIDEO_FIELD_ORDER_TOP_FIELD_FIRST;
    for (guint plane = 0; plane < 3; ++plane)
        EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info, plane),
                  std::vector<int>(plane == 0 ? 12 : 6, 200));
    GST_VIDEO_INFO_FIELD_ORDER(&info) = GST_VIDEO_FIELD_ORDER_BOTTOM_FIELD_FIRST;
    for (guint plane = 0; plane < 3; ++plane)
        EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info, plane),
                  std::vector<int>(plane == 0 ? 12 : 6, 50));
    EXPECT_EQ(rowsOf(picture, info), (std::vector{200, 50, 200, 50, 200, 50, 200, 50, 200, 50, 200, 50}))
        << "the decoder's picture must not change";
}

TEST(Deinterlacer, TakesTheFieldOrderFromThePictureWhereTheCapsHaveNone)
{
    Deinterlacer deinterlacer;
    const GstVideoInfo info = pictures(GST_VIDEO_FORMAT_I420, GST_VIDEO_INTERLACE_MODE_INTERLEAVED);
    const GstBufferPtr picture = pictureOf(info, combedRow);
    EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info), std::vector<int>(6, 50));
    GST_BUFFER_FLAG_SET(picture.get(), GST_VIDEO_BUFFER_FLAG_TFF);
    EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info), std::vector<int>(6, 200));
}

TEST(Deinterlacer, KeepsWhatDoesNotMove)
{
    Deinterlacer deinterlacer;
    const GstVideoInfo info = pictures(GST_VIDEO_FORMAT_I420, GST_VIDEO_INTERLACE_MODE_INTERLEAVED);
    const GstBufferPtr picture = pictureOf(info, [](int row) { return 10 + 7 * row * row; });
    GST_BUFFER_FLAG_SET(picture.get(), GST_VIDEO_BUFFER_FLAG_TFF);
    // The last line has no neighbour below.
    EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info),
              (std::vector{10, 17, 38, 73, 122, 122}));
}

TEST(Deinterlacer, HandlesWordsAndInterleavedPlanes)
{
    Deinterlacer deinterlacer;
    for (const GstVideoFormat format :
         {GST_VIDEO_FORMAT_I422_10LE, GST_VIDEO_FORMAT_P010_10LE, GST_VIDEO_FORMAT_I420_12LE}) {
        const GstVideoInfo info = pictures(format, GST_VIDEO_INTERLACE_MODE_INTERLEAVED);
        const GstBufferPtr picture = pictureOf(info, [](int row) { return row % 2 == 0 ? 0x0280 : 0x0301; });
        const auto result = rowsOf(deinterlacer.deinterlace(picture.get(), info), info);
        EXPECT_EQ(result, std::vector<int>(6, 0x0301)) << gst_video_format_to_string(format);
    }
    for (const GstVideoFormat format :
         {GST_VIDEO_FORMAT_NV12, GST_VIDEO_FORMAT_YUY2, GST_VIDEO_FORMAT_UYVY, GST_VIDEO_FORMAT_Y42B}) {
        const GstVideoInfo info = pictures(format, GST_VIDEO_INTERLACE_MODE_INTERLEAVED);
        const GstBufferPtr picture = pictureOf(info, combedRow);
        EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), info), info), std::vector<int>(6, 50))
            << gst_video_format_to_string(format);
    }
}

TEST(Deinterlacer, ReturnsPicturesThatAreNotInterlacedAsTheyAre)
{
    Deinterlacer deinterlacer;
    const GstVideoInfo progressive =
        pictures(GST_VIDEO_FORMAT_I420, GST_VIDEO_INTERLACE_MODE_PROGRESSIVE, 8, 8);
    const GstBufferPtr picture = pictureOf(progressive, combedRow);
    EXPECT_EQ(deinterlacer.deinterlace(picture.get(), progressive).get(), picture.get());
    const GstVideoInfo mixed = pictures(GST_VIDEO_FORMAT_I420, GST_VIDEO_INTERLACE_MODE_MIXED, 8, 8);
    EXPECT_EQ(deinterlacer.deinterlace(picture.get(), mixed).get(), picture.get());
    GST_BUFFER_FLAG_SET(picture.get(), GST_VIDEO_BUFFER_FLAG_INTERLACED);
    EXPECT_EQ(rowsOf(deinterlacer.deinterlace(picture.get(), mixed), mixed), std::vector<int>(8, 50));
    const GstVideoInfo packed = pictures(GST_VIDEO_FORMAT_v210, GST_VIDEO_INTERLACE_MODE_INTERLEAVED, 48, 6);
    const GstBufferPtr words(gst_buffer_new_allocate(nullptr, packed.size, nullptr));
    EXPECT_EQ(deinterlacer.deinterlace(words.get(), packed).get(), words.get());
}
