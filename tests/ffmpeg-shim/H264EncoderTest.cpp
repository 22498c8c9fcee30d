#include "ffmpeg-shim/H264Encoder.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace stackreel::shim
{

namespace
{

/// The text that FFmpeg prints before the list of encoders.
const std::string legend = "Encoders:\n"
                           " V..... = Video\n"
                           " A..... = Audio\n"
                           " .F.... = Frame-level multithreading\n"
                           " ------\n";

struct Row {
    const char* description;
    std::string listing;
    std::optional<H264Encoder> expected;
};

const Row rows[] = {
    {"nothing", "", std::nullopt},
    {"the legend alone", legend, std::nullopt},
    {"x264", legend + " V....D libx264              libx264 H.264 (codec h264)\n", H264Encoder::x264},
    {"OpenH264", legend + " V....D libopenh264          OpenH264 (codec h264)\n", H264Encoder::openH264},
    {"VideoToolbox", legend + " V....D h264_videotoolbox    H.264 (codec h264)\n", H264Encoder::videoToolbox},
    {"no description and no last line end", " V....D libx264", H264Encoder::x264},
    {"lines that end as on Windows", " V....D libx264\r\n V....D mpeg4\r\n", H264Encoder::x264},
    {"x264 after OpenH264", " V....D libopenh264 x\n V....D libx264 y\n", H264Encoder::x264},
    {"VideoToolbox between the others",
     " V....D libx264 x\n V..... h264_videotoolbox y\n V..... libopenh264 z\n", H264Encoder::videoToolbox},
    {"a longer name", " V....D libx264rgb           libx264 RGB (codec h264)\n", std::nullopt},
    {"a longer name before the right one", " V....D libx264rgb x\n V....D libx264 y\n", H264Encoder::x264},
    {"a mention in a description", " V....D other                like libx264 but not it\n", std::nullopt},
    {"a sound encoder of that name", " A....D libx264              sound\n", std::nullopt},
    {"flags cut short", " V...D libx264              H.264\n", std::nullopt},
    {"a name without flags", "libx264\n", std::nullopt},
    {"flags without a name", " V....D\nlibx264\n", std::nullopt},
    {"bytes that are no text", " V....D \xff\xfe\0x\n V....D libx264 \xc3\n"s, H264Encoder::x264},
};

} // namespace

TEST(H264Encoder, TheBestOfTheListedEncodersIsPreferred)
{
    for (const Row& row : rows)
        EXPECT_EQ(preferredEncoder(row.listing), row.expected) << row.description;
}

} // namespace stackreel::shim
