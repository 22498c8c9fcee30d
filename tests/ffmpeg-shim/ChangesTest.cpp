#include "ffmpeg-shim/Changes.h"

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
              (Names{"encoder", "time-stamps", "chroma", "duration", "key-frame", "channel-layout", "seek"}));
    EXPECT_EQ(changedNames(everything, H264Encoder::videoToolbox), Names{"encoder"});
}

TEST(Changes, NameTheRecipe)
{
    const Arguments request{"-filter_complex", "null", "out.mp4"};
    const auto changes = changesBetween(request, withComment(request, "{}"), H264Encoder::x264);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[1].line(), "[stackreel] comment=the recipe: the export can be repeated from its file");
}

TEST(Changes, WarnOnlyOfWhatStaysUnconverted)
{
    EXPECT_EQ((Change{"dynamic-range", unconverted, "why"}).warning(),
              "The video keeps the dynamic range of the source: why.");
    EXPECT_EQ((Change{"dynamic-range", "standard", "why"}).warning(), "");
}

} // namespace stackreel::shim
