#include "player/pictures/PictureSize.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(PictureSize, FitsThePictureIntoTheBoxAndNeverEnlargesIt)
{
    const struct {
        int width, height, aspectWidth, aspectHeight;
        int quarterTurns;
        PictureSize box;
        PictureSize scaled;
    } rows[] = {
        {1920, 1080, 1, 1, 0, {1100, 620}, {1100, 620}},   {1920, 1080, 1, 1, 0, {320, 180}, {320, 180}},
        {1920, 1080, 1, 1, 0, {1100, 622}, {1100, 618}},   {1920, 1080, 1, 1, 0, {1921, 1081}, {1920, 1080}},
        {1920, 1080, 1, 1, 0, {4000, 4000}, {1920, 1080}}, {1920, 1080, 1, 1, 1, {320, 180}, {180, 100}},
        {1920, 1080, 1, 1, 2, {320, 180}, {320, 180}},     {720, 576, 16, 11, 0, {0, 0}, {1046, 576}},
        {720, 576, 12, 11, 0, {392, 1000}, {392, 286}},    {1440, 1080, 4, 3, 0, {320, 180}, {320, 180}},
        {1440, 1080, 4, 3, 3, {320, 180}, {180, 100}},     {640, 480, 1, 2, 0, {0, 480}, {320, 480}},
        {640, 480, 0, 1, 0, {0, 0}, {640, 480}},           {320, 180, 1, 1, 0, {0, -1}, {320, 180}},
        {321, 181, 1, 1, 0, {0, 0}, {320, 180}},           {1, 1, 1, 1, 0, {100, 100}, {2, 2}},
        {4000, 20, 1, 1, 0, {100, 100}, {100, 2}},         {16384, 16384, 1, 1, 0, {1, 1}, {2, 2}},
    };
    for (const auto& row : rows) {
        GstVideoInfo info;
        gst_video_info_set_format(&info, GST_VIDEO_FORMAT_I420, static_cast<guint>(row.width),
                                  static_cast<guint>(row.height));
        info.par_n = row.aspectWidth;
        info.par_d = row.aspectHeight;
        EXPECT_EQ(scaledSize(info, {row.quarterTurns, false}, row.box), row.scaled)
            << row.width << "×" << row.height << " into " << row.box.width << "×" << row.box.height;
    }
}

} // namespace stackreel
