#include "player/pictures/RgbMatrix.h"

#include "player/base/GStreamer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace stackreel;

namespace
{

struct Case {
    GstVideoColorMatrix matrix;
    double red; ///< the weight of red in the luma (ITU-T H.273, table 4)
    double blue;
};

/// R'G'B' of 8 bits for codes, not rounded (H.273, equations 1 to 3).
std::array<double, 3> expected(const Case& colours, bool full, int luma, int cb, int cr)
{
    const double y = full ? luma / 255.0 : (luma - 16) / 219.0;
    const double scale = full ? 255 : 224;
    const double red = y + 2 * (1 - colours.red) * (cr - 128) / scale;
    const double blue = y + 2 * (1 - colours.blue) * (cb - 128) / scale;
    const double green = (y - colours.red * red - colours.blue * blue) / (1 - colours.red - colours.blue);
    return {std::clamp(red, 0.0, 1.0) * 255, std::clamp(green, 0.0, 1.0) * 255,
            std::clamp(blue, 0.0, 1.0) * 255};
}

/// A mapped frame with memory of its own.
class Frame
{
public:
    Frame(GstVideoFormat format, guint width, guint height)
    {
        ensureGStreamer();
        gst_video_info_set_format(&m_info, format, width, height);
        m_buffer.reset(gst_buffer_new_allocate(nullptr, m_info.size, nullptr));
        EXPECT_TRUE(gst_video_frame_map(&frame, &m_info, m_buffer.get(), GST_MAP_READWRITE));
    }
    ~Frame() { gst_video_frame_unmap(&frame); }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    guint8& at(guint plane, int x, int y)
    {
        return static_cast<guint8*>(
            GST_VIDEO_FRAME_PLANE_DATA(&frame, plane))[y * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane) + x];
    }

    GstVideoFrame frame = {};

private:
    GstVideoInfo m_info = {};
    GstBufferPtr m_buffer;
};

} // namespace

TEST(RgbMatrix, FollowsTheStandardForEachMatrixAndRange)
{
    constexpr int width = 54, height = 2; // no whole number of vectors
    for (const Case& colours :
         {Case{GST_VIDEO_COLOR_MATRIX_BT709, 0.2126, 0.0722},
          Case{GST_VIDEO_COLOR_MATRIX_BT601, 0.299, 0.114},
          Case{GST_VIDEO_COLOR_MATRIX_BT2020, 0.2627, 0.0593},
          Case{GST_VIDEO_COLOR_MATRIX_SMPTE240M, 0.212, 0.087}, Case{GST_VIDEO_COLOR_MATRIX_FCC, 0.30, 0.11}})
        for (const bool full : {false, true}) {
            RgbMatrix matrix({full ? GST_VIDEO_COLOR_RANGE_0_255 : GST_VIDEO_COLOR_RANGE_16_235,
                              colours.matrix, GST_VIDEO_TRANSFER_UNKNOWN, GST_VIDEO_COLOR_PRIMARIES_UNKNOWN});
            for (int round = 0; round < 40; ++round) {
                Frame planar(GST_VIDEO_FORMAT_I420, width, height);
                Frame rgb(GST_VIDEO_FORMAT_BGRx, width, height);
                for (int x = 0; x < width; ++x) {
                    planar.at(0, x, 0) = static_cast<guint8>(x * 5 + round);
                    planar.at(0, x, 1) = static_cast<guint8>(255 - x * 3 - round);
                    planar.at(1, x / 2, 0) = static_cast<guint8>(x * 11 + round * 23);
                    planar.at(2, x / 2, 0) = static_cast<guint8>(x * 37 + round * 59);
                }
                matrix.convert(planar.frame, rgb.frame);
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < width; ++x) {
                        const auto wanted = expected(colours, full, planar.at(0, x, y),
                                                     planar.at(1, x / 2, 0), planar.at(2, x / 2, 0));
                        for (int index = 0; index < 3; ++index)
                            ASSERT_NEAR(rgb.at(0, 4 * x + 2 - index, y),
                                        wanted[static_cast<std::size_t>(index)], 0.6)
                                << colours.red << ", full range " << full << ", pixel " << x;
                        ASSERT_EQ(rgb.at(0, 4 * x + 3, y), 255);
                    }
            }
        }
}
