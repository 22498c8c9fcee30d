#include "ffmpeg-shim/Changes.h"

#include "ffmpeg-shim/ColourFilters.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

namespace
{

const Arguments plainExport{"-i",        "clip-ss.mov", "-c:v", "h264_videotoolbox",
                            "-allow_sw", "1",           "-an",  "out.mp4"};

using Names = std::vector<std::string_view>;

Names changedNames(const Arguments& arguments, H264Encoder encoder)
{
    Names names;
    for (const Change& change : changesBetween(arguments, withEncoder(arguments, encoder), encoder))
        names.push_back(change.name);
    return names;
}

} // namespace

TEST(Changes, NameTheEncoderAndWhyItWasChosen)
{
    const auto lineFor = [](H264Encoder encoder) {
        return changesBetween(plainExport, withEncoder(plainExport, encoder), encoder).at(0).line();
    };
    EXPECT_EQ(lineFor(H264Encoder::x264),
              "[stackreel] encoder=libx264: this FFmpeg has no h264_videotoolbox");
    EXPECT_EQ(lineFor(H264Encoder::openH264),
              "[stackreel] encoder=libopenh264: this FFmpeg has neither h264_videotoolbox nor libx264");
    EXPECT_EQ(lineFor(H264Encoder::videoToolbox),
              "[stackreel] encoder=h264_videotoolbox: this FFmpeg has it");
}

TEST(Changes, AreOnlyTheEncoderWhereNothingElseChanges)
{
    EXPECT_EQ(changedNames(plainExport, H264Encoder::x264), Names{"encoder"});
}

TEST(Changes, AreListedWhereTheArgumentsChange)
{
    const std::string graph = "[0:v:0]split=2[a][b];[a]scale=1080:675:flags=bicubic,setpts=PTS-STARTPTS[c];"
                              "[b]scale=1080:675:flags=bicubic,setpts=PTS-STARTPTS[d];[c][d]vstack=inputs=2";
    const Arguments everything{"-ss",
                               "0.000",
                               "-i",
                               "clip.mov",
                               "-t",
                               "1.000",
                               "-filter_complex",
                               graph,
                               "-c:v",
                               "h264_videotoolbox",
                               "-allow_sw",
                               "1",
                               "-af",
                               "asetpts=PTS-STARTPTS",
                               "-c:a",
                               "aac",
                               "out.mp4"};
    EXPECT_EQ(changedNames(everything, H264Encoder::x264),
              (Names{"encoder", "time-stamps", "chroma", "channel-layout", "seek"}));
    EXPECT_EQ(changedNames(everything, H264Encoder::videoToolbox), Names{"encoder"});
}

TEST(Changes, NameWhatWasDoneToTheColours)
{
    const std::string half = "scale=8:8:flags=bicubic,setsar=1";
    const Arguments before{"-i", "in", "-filter_complex",
                           "[0:v:0]split=2[a][b];[a]" + half + "[c];[b]" + half +
                               "[d];[c][d]vstack=inputs=2,format=yuv420p[video]"};
    const auto namesFor = [&](const ColourConversion& conversion) {
        Names names;
        const Arguments after = withBt709(before, conversion, {TableFilter::lut3d, "/tables"});
        for (const Change& change : changesBetween(before, after, H264Encoder::x264))
            names.push_back(change.name);
        return names;
    };
    EXPECT_EQ(namesFor({.matrix = "bt709"}), (Names{"encoder", "colours"}));
    EXPECT_EQ(namesFor({.matrix = "bt601", .fullRange = true}),
              (Names{"encoder", "colours", "matrix", "range"}));
    EXPECT_EQ(namesFor({.matrix = "bt2020", .tables = {"hlg"}, .isInterlaced = true}),
              (Names{"encoder", "colours", "fields", "dynamic-range"}));
    EXPECT_EQ(namesFor({.matrix = "bt709", .tables = {"gamma28", "p3"}}),
              (Names{"encoder", "colours", "gamma", "primaries"}));
}

} // namespace stackreel::shim
