#include "ffmpeg-shim/Arguments.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace stackreel::shim
{

namespace
{

const Arguments request{"-c:v", "h264_videotoolbox", "-allow_sw", "1"};

/// The concatenation of the lists.
Arguments joined(const std::vector<Arguments>& lists)
{
    Arguments result;
    for (const Arguments& list : lists)
        result.insert(result.end(), list.begin(), list.end());
    return result;
}

/// The arguments that replace a request for VideoToolbox.
Arguments options(H264Encoder encoder)
{
    return withEncoder(request, encoder);
}

/// The value of `-af` that is added to an output with AAC audio and without audio filters.
std::string layoutFilter()
{
    const Arguments result = withEncoder(joined({request, {"-c:a", "aac"}}), H264Encoder::x264);
    return *(std::find(result.begin(), result.end(), "-af") + 1);
}

/// Argument lists that do not request VideoToolbox.
const Arguments withoutRequest[] = {
    {},
    {""},
    {"-version"},
    {"-c:v", "h264_videotoolbox", "-allow_sw"},
    {"-c:v", "h264_videotoolbox", "-allow_sw", "0"},
    {"-c:v", "h264_videotoolbox", "-allow_sw", "1 "},
    {"-c:v", "h264_videotoolbox", "-allow_sw", "true"},
    {"-vcodec", "h264_videotoolbox", "-allow_sw", "1"},
    {"-c:v:0", "h264_videotoolbox", "-allow_sw", "1"},
    {"-c:v", "hevc_videotoolbox", "-allow_sw", "1"},
    {"-allow_sw", "1", "-c:v", "h264_videotoolbox"},
    {"-c:v", "h264_videotoolbox", "-b:v", "12M", "-allow_sw", "1"},
    {"-c:v", "-allow_sw", "h264_videotoolbox", "1"},
    {"-c:v h264_videotoolbox -allow_sw 1"},
    {"-c:v", "h264_videotoolbox", "-af", "volume=2", "-c:a", "aac"},
};

} // namespace

TEST(Arguments, RequestTheEncoderOnlyByItsFourOptionsInOrder)
{
    for (const Arguments& arguments : withoutRequest)
        EXPECT_FALSE(requestsVideoToolbox(arguments)) << testing::PrintToString(arguments);
    EXPECT_TRUE(requestsVideoToolbox(request));
    EXPECT_TRUE(requestsVideoToolbox(joined({{"-y", "-c:v"}, request, {"out.mp4"}})));
}

TEST(Arguments, AreUnchangedWithoutARequestForTheEncoder)
{
    for (const Arguments& arguments : withoutRequest) {
        EXPECT_EQ(withEncoder(arguments, H264Encoder::x264), arguments);
        EXPECT_EQ(withEncoder(arguments, H264Encoder::openH264), arguments);
    }
}

TEST(Arguments, AreUnchangedWhereFFmpegHasTheEncoder)
{
    const Arguments arguments = joined({{"-i", "in"}, request, {"-af", "volume=2", "-c:a", "aac", "out"}});
    EXPECT_EQ(withEncoder(arguments, H264Encoder::videoToolbox), arguments);
}

TEST(Arguments, ScaleASimpleFilterGraphToEvenSidesForAnyEncoder)
{
    const Arguments fitted{"-vf", "scale=960:-2:force_original_aspect_ratio=decrease,format=yuv420p"};
    const Arguments even{"-vf", "scale=960:'max(2,2*round(960*ih/iw/2))',format=yuv420p"};
    for (const H264Encoder encoder : {H264Encoder::videoToolbox, H264Encoder::x264, H264Encoder::openH264})
        EXPECT_EQ(withEncoder(joined({fitted, request}), encoder), joined({even, options(encoder)}));
    EXPECT_EQ(withEncoder(fitted, H264Encoder::x264), fitted);
    const Arguments withoutValue = joined({request, {"-vf"}});
    EXPECT_EQ(withEncoder(withoutValue, H264Encoder::videoToolbox), withoutValue);
}

TEST(Arguments, ReplaceTheRequestByTheOptionsOfEachEncoder)
{
    const Arguments x264 = options(H264Encoder::x264);
    ASSERT_GE(x264.size(), 2U);
    EXPECT_EQ(x264[0], "-c:v");
    EXPECT_EQ(x264[1], "libx264");
    const Arguments openH264 = options(H264Encoder::openH264);
    ASSERT_GE(openH264.size(), 2U);
    EXPECT_EQ(openH264[0], "-c:v");
    EXPECT_EQ(openH264[1], "libopenh264");
}

TEST(Arguments, KeepTheRequestedRateAndQualityForEachEncoder)
{
    for (const H264Encoder encoder : {H264Encoder::x264, H264Encoder::openH264}) {
        for (const std::string& option : options(encoder)) {
            for (const char* other : {"crf", "-qp", "qp=", "-b:v", "bitrate=", "-q:v", "maxrate"})
                EXPECT_EQ(option.find(other), std::string::npos) << option;
        }
    }
}

TEST(Arguments, KeepAllOtherArguments)
{
    const Arguments before{"-hide_banner", "-y",       "-i",  "a b\"c'd\\\n\t%$*.mp4", "",
                           "caf\xc3\xa9",  "\xff\xfe", "-c:v"};
    const Arguments after{"-b:v",      "12M", "-movflags", "+faststart",  "-an",
                          "-allow_sw", "1",   "",          "\xc3 out.mp4"};
    for (const H264Encoder encoder : {H264Encoder::x264, H264Encoder::openH264})
        EXPECT_EQ(withEncoder(joined({before, request, after}), encoder),
                  joined({before, options(encoder), after}));
}

TEST(Arguments, ReplaceTheEncoderOfEachOutputThatRequestsIt)
{
    const Arguments arguments = joined({{"-i", "in"}, request, {"one"}, request, {"two"}});
    const Arguments x264 = options(H264Encoder::x264);
    EXPECT_EQ(withEncoder(arguments, H264Encoder::x264),
              joined({{"-i", "in"}, x264, {"one"}, x264, {"two"}}));
}

TEST(Arguments, AddAChannelLayoutAfterTheAudioFiltersOfAnAacOutput)
{
    struct Row {
        const char* description;
        Arguments before;
        Arguments after;
    };
    const std::string filter = layoutFilter();
    ASSERT_TRUE(filter.starts_with("aformat=channel_layouts=mono|stereo|"));
    const Row rows[] = {
        {"filters",
         {"-af", "asetpts=PTS-STARTPTS", "-c:a", "aac"},
         {"-af", "asetpts=PTS-STARTPTS," + filter, "-c:a", "aac"}},
        {"filters behind the encoder",
         {"-c:a", "aac", "-af", "volume=2"},
         {"-c:a", "aac", "-af", "volume=2," + filter}},
        {"an empty filter", {"-af", "", "-c:a", "aac"}, {"-af", filter, "-c:a", "aac"}},
        {"no filter",
         {"-b:v", "2M", "-c:a", "aac", "out"},
         {"-b:v", "2M", "-af", filter, "-c:a", "aac", "out"}},
        {"a filter option without a value", {"-c:a", "aac", "-af"}, {"-c:a", "aac", "-af"}},
        {"no sound", {"-an", "-af", "volume=2"}, {"-an", "-af", "volume=2"}},
        {"another encoder", {"-af", "volume=2", "-c:a", "copy"}, {"-af", "volume=2", "-c:a", "copy"}},
        {"an encoder of a like name",
         {"-af", "volume=2", "-c:a", "aac_at"},
         {"-af", "volume=2", "-c:a", "aac_at"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(withEncoder(joined({request, row.before}), H264Encoder::x264),
                  joined({options(H264Encoder::x264), row.after}))
            << row.description;
}

TEST(Arguments, OmitASeekToTheStartOfAnInput)
{
    const struct {
        Arguments before, after;
    } rows[] = {
        {{"-y", "-ss", "0.000", "-i", "in", "-t", "1.000"}, {"-y", "-i", "in", "-t", "1.000"}},
        {{"-ss", "0.001", "-i", "in"}, {"-ss", "0.001", "-i", "in"}},
        {{"-i", "in", "-ss", "0.000"}, {"-i", "in", "-ss", "0.000"}},
        {{"-ss", "0.000", "-i", "-ss", "-t", "0.000"}, {"-i", "-ss", "-t", "0.000"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(withEncoder(joined({row.before, request}), H264Encoder::x264),
                  joined({row.after, options(H264Encoder::x264)}));
}

TEST(Arguments, LeaveFiltersBeforeTheRequestAlone)
{
    const Arguments before{"-i", "-af", "volume=2"};
    const Arguments result = withEncoder(joined({before, request, {"-c:a", "aac"}}), H264Encoder::x264);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), result.begin()));
}

TEST(Arguments, AddACommentBeforeTheFileNameOfAnExport)
{
    const Arguments exporting = joined({{"-filter_complex", "null"}, request, {"out.mp4"}});
    EXPECT_EQ(withComment(exporting, "a=b \"c\""),
              joined({{"-filter_complex", "null"}, request, {"-metadata", "comment=a=b \"c\"", "out.mp4"}}));
    EXPECT_EQ(withComment(exporting, ""), exporting);
    EXPECT_EQ(withComment({"-i", "a.mov", "copy.mp4"}, "text"), (Arguments{"-i", "a.mov", "copy.mp4"}));
    EXPECT_EQ(withComment({}, "text"), Arguments{});
}

} // namespace stackreel::shim
