#include "ffmpeg-shim/SourceVideo.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

TEST(SourceVideo, IsReadFromTheReport)
{
    const auto video = parseSourceVideo("width=1920\nheight=1080\npix_fmt=yuv420p10le\ncolor_range=tv\n"
                                        "color_space=bt2020nc\ncolor_transfer=arib-std-b67\n"
                                        "color_primaries=bt2020\nfield_order=progressive\nrotation=-90\n"
                                        "codec_name=hevc\n");
    const SourceVideo expected{.width = 1920,
                               .height = 1080,
                               .pixelFormat = "yuv420p10le",
                               .range = "tv",
                               .matrix = "bt2020nc",
                               .transfer = "arib-std-b67",
                               .primaries = "bt2020",
                               .fieldOrder = "progressive",
                               .rotation = -90,
                               .codec = "hevc"};
    EXPECT_EQ(video, expected);
}

TEST(SourceVideo, IsReadWithoutColoursAndWithOtherLines)
{
    const auto video = parseSourceVideo("noise\r\nwidth=8\r\nheight=6\r\nlater=1\r\npix_fmt=rgb24\r\nx=");
    ASSERT_TRUE(video);
    EXPECT_EQ(video->width, 8);
    EXPECT_EQ(video->pixelFormat, "rgb24");
    EXPECT_EQ(video->matrix, "");
    EXPECT_EQ(video->rotation, 0);
}

TEST(SourceVideo, IsUnknownWithoutAPicture)
{
    for (const char* report : {"", "\n\n", "=", "width=8\nheight=6\n", "width=0\nheight=6\npix_fmt=gray\n",
                               "width=8\nheight=x\npix_fmt=gray\n", "width=8\nheight=6\npix_fmt=unknown\n"})
        EXPECT_FALSE(parseSourceVideo(report)) << report;
}

TEST(SourceVideo, QueryTakesAnyFileName)
{
    const auto query = sourceVideoQuery("-o");
    ASSERT_GE(query.size(), 2U);
    EXPECT_EQ(query[query.size() - 2], "-i");
    EXPECT_EQ(query.back(), "-o");
}

} // namespace stackreel::shim
