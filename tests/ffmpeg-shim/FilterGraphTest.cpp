#include "ffmpeg-shim/FilterGraph.h"

#include "ffmpeg-shim/Arguments.h"

#include <gtest/gtest.h>

namespace stackreel::shim
{

namespace
{

std::string graph(const std::string& top, const std::string& bottom,
                  const std::string& join = "vstack=inputs=2")
{
    return "[0:v:0]split=2[a][b];[a]crop=w=8:h=6:x=2:y=3,scale=" + top + ",setsar=1[t];[b]scale=" + bottom +
           ",setsar=1[u];[t][u]" + join + ",format=yuv420p[video]";
}

} // namespace

TEST(FilterGraph, HalvesOfAnOddHeightKeepFullChroma)
{
    const std::string feed = "1080:675:flags=bicubic";
    EXPECT_EQ(withFullChroma(graph(feed, feed)), graph(feed + ",format=yuv444p", feed + ",format=yuv444p"));
    EXPECT_EQ(withFullChroma(graph("2:1:flags=bicubic", feed)),
              graph("2:1:flags=bicubic,format=yuv444p", feed + ",format=yuv444p"));
}

TEST(FilterGraph, IsUnchangedWithoutHalvesOfAnOddHeight)
{
    const std::string portrait = "1080:960:flags=bicubic";
    for (const std::string& each :
         {std::string(), graph(portrait, portrait), graph("1080:5750:flags=bicubic", portrait),
          graph("1081:960:flags=bicubic", portrait), graph("1080:675", portrait),
          graph("1080:675:flags=bicubic", portrait, "hstack=inputs=2")})
        EXPECT_EQ(withFullChroma(each), each);
}

TEST(FilterGraph, ScalesToEvenSides)
{
    const std::string fitted = "scale=960:-2:force_original_aspect_ratio=decrease";
    const std::string even = "scale=960:'max(2,2*round(960*ih/iw/2))'";
    EXPECT_EQ(withEvenSides(fitted), even);
    EXPECT_EQ(withEvenSides(fitted + ",format=yuv420p"), even + ",format=yuv420p");
    EXPECT_EQ(withEvenSides("fps=5," + fitted), "fps=5," + even);
    for (const std::string& other :
         {std::string(), std::string("scale=960:-2"), std::string("scale=960:540"), fitted + ":flags=area",
          std::string("scale=961:-2:force_original_aspect_ratio=decrease"),
          std::string("scale=960:-2:force_original_aspect_ratio=increase")})
        EXPECT_EQ(withEvenSides(other), other);
}

TEST(FilterGraph, KeepsFullChromaWhereTheEncoderIsReplaced)
{
    const std::string feed = graph("1080:675:flags=bicubic", "1080:675:flags=bicubic");
    const Arguments arguments = {"-i",  feed,   "-filter_complex",   feed,        "-map",
                                 "[v]", "-c:v", "h264_videotoolbox", "-allow_sw", "1"};
    const Arguments changed = withEncoder(arguments, H264Encoder::x264);
    EXPECT_EQ(changed.at(1), feed) << "a file may have any name";
    EXPECT_EQ(changed.at(3), withFullChroma(feed));
    EXPECT_EQ(withEncoder(arguments, H264Encoder::videoToolbox), arguments);
    EXPECT_EQ(withEncoder({"-filter_complex", feed}, H264Encoder::x264),
              (Arguments{"-filter_complex", feed}));
    const Arguments cutOff = {"-c:v", "h264_videotoolbox", "-allow_sw", "1", "-filter_complex"};
    EXPECT_EQ(withEncoder(cutOff, H264Encoder::x264).back(), "-filter_complex");
}

TEST(FilterGraph, TrimsInsteadOfResettingTimeStamps)
{
    const std::string reset = "[a]setsar=1,setpts=PTS-STARTPTS[t];[b]setpts=2*PTS,setpts=PTS-STARTPTS[u]";
    EXPECT_TRUE(resetsTimeStamps(reset));
    EXPECT_EQ(withTrim(reset, "2.500"),
              "[a]setsar=1,trim=duration=2.500[t];[b]setpts=2*PTS,trim=duration=2.500[u]");
    EXPECT_EQ(withTrim(reset, std::nullopt), "[a]setsar=1[t];[b]setpts=2*PTS[u]");
    for (const char* other : {"", "[a]setpts=PTS-STARTPTS[t]", "[a]scale=2:2,setpts=2*PTS[t]"}) {
        EXPECT_FALSE(resetsTimeStamps(other));
        EXPECT_EQ(withTrim(other, "2.500"), other);
    }
}

} // namespace stackreel::shim
