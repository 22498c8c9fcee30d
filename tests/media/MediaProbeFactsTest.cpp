#include "media/MediaProbe.h"
#include "media/MediaToolError.h"

#include <gtest/gtest.h>

#include <limits>

namespace stackreel
{

namespace
{

MediaInfo factsOf(const std::string& json)
{
    return MediaProbe::facts(ProbeDocument::decode(json));
}

/// The properties in a report with one video stream of this size. `rest` is further JSON keys of the stream.
MediaInfo factsOfVideo(int width, int height, const std::string& rest = "")
{
    return factsOf(R"({"streams": [{"codec_type": "video", "width": )" + std::to_string(width) +
                   R"(, "height": )" + std::to_string(height) + (rest.empty() ? "" : ", ") + rest + "}]}");
}

void expectError(const std::string& json, const MediaToolError& expected)
{
    try {
        factsOf(json);
        FAIL() << "no error: " << json;
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, expected) << json << ": " << error.what();
    }
}

bool isVertical(int width, int height, const std::string& rest = "")
{
    try {
        factsOfVideo(width, height, rest);
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, MediaToolError::verticalSource());
        return true;
    }
    return false;
}

} // namespace

TEST(ProbeFacts, ComeFromTheFirstVideoAndTheFirstAudioStream)
{
    const MediaInfo info = factsOf(R"({"streams": [
        {"codec_type": "data"},
        {"codec_type": "audio", "codec_name": "aac", "duration": "99"},
        {"codec_type": "video", "codec_name": "hevc", "width": 3840, "height": 2160, "duration": "12.5"},
        {"codec_type": "video", "codec_name": "mjpeg", "width": 100, "height": 100},
        {"codec_type": "audio", "codec_name": "opus"}], "format": {"duration": "13"}})");
    EXPECT_EQ(info, (MediaInfo{.width = 3840,
                               .height = 2160,
                               .rotation = 0,
                               .duration = 12.5,
                               .videoCodec = "hevc",
                               .audioCodec = "aac"}));
}

TEST(ProbeFacts, KeepTheCodedSizeAndTheReportedRotation)
{
    const MediaInfo info = factsOfVideo(1080, 1920, R"("side_data_list": [{"rotation": -90}])");
    EXPECT_EQ(info.width, 1080);
    EXPECT_EQ(info.height, 1920);
    EXPECT_EQ(info.rotation, -90);
    EXPECT_EQ(info.displayAspect(), 1920.0 / 1080.0);
    EXPECT_EQ(factsOfVideo(1920, 1080, R"("side_data_list": [{"rotation": 540}])").rotation, 540);
}

TEST(ProbeFacts, AreRejectedUnlessTheDisplayedPictureIsWiderThanHigh)
{
    const auto turned = [](int degrees) {
        return R"("side_data_list": [{"rotation": )" + std::to_string(degrees) + "}]";
    };
    EXPECT_FALSE(isVertical(1920, 1080));
    EXPECT_TRUE(isVertical(1080, 1920));
    EXPECT_TRUE(isVertical(1080, 1080));
    EXPECT_FALSE(isVertical(1081, 1080));
    EXPECT_TRUE(isVertical(1080, 1920, turned(180)));
    EXPECT_FALSE(isVertical(1080, 1920, turned(270)));
    EXPECT_TRUE(isVertical(1920, 1080, turned(90)));
    EXPECT_TRUE(isVertical(1920, 1080, turned(-270)));
    EXPECT_TRUE(isVertical(1080, 1080, turned(90)));
    EXPECT_TRUE(isVertical(1920, 1080, R"("tags": {"rotate": "90"})"));
    EXPECT_TRUE(isVertical(0, 0));
}

TEST(ProbeFacts, RequireAVideoStreamWithASize)
{
    const auto noVideo = MediaToolError::noVideo();
    expectError(R"({"streams": []})", noVideo);
    expectError(R"({"streams": [{"codec_type": "audio", "codec_name": "aac"}]})", noVideo);
    expectError(R"({"streams": [{"codec_type": "Video", "width": 1920, "height": 1080}]})", noVideo);
    expectError(R"({"streams": [{"codec_type": "video ", "width": 1920, "height": 1080}]})", noVideo);
    expectError(R"({"streams": [{"width": 1920, "height": 1080}]})", noVideo);
    expectError(R"({"streams": [{"codec_type": "video", "width": 1920}]})", noVideo);
    expectError(R"({"streams": [{"codec_type": "video", "height": 1080}]})", noVideo);
    expectError(R"({"streams": [{"codec_type": "video", "width": null, "height": 1080}]})", noVideo);
    expectError(
        R"({"streams": [{"codec_type": "video"}, {"codec_type": "video", "width": 1920, "height": 1080}]})",
        noVideo);
}

TEST(ProbeRotation, ComesFromTheSideDataElseFromTheTag)
{
    struct Row {
        const char* rest;
        std::int64_t expected;
    };
    const Row rows[] = {
        {R"("codec_name": "h264")", 0},
        {R"("side_data_list": [{"rotation": 180}])", 180},
        {R"("side_data_list": [{}, {"rotation": 180}, {"rotation": 360}])", 180},
        {R"("side_data_list": [{"rotation": 0}], "tags": {"rotate": "180"})", 0},
        {R"("side_data_list": [{"rotation": null}, {}], "tags": {"rotate": "180"})", 180},
        {R"("side_data_list": [{"side_data_type": "x"}], "tags": {"rotate": "180"})", 180},
        {R"("side_data_list": [], "tags": {"rotate": "-180"})", -180},
        {R"("side_data_list": null, "tags": {"rotate": "180"})", 180},
        {R"("side_data_list": [{}])", 0},
        {R"("side_data_list": [{"rotation": -9223372036854775808}])",
         std::numeric_limits<std::int64_t>::min()},
        {R"("tags": {})", 0},
        {R"("tags": {"Rotate": "180"})", 0},
        {R"("tags": {"rotate": ""})", 0},
        {R"("tags": {"rotate": "+180"})", 180},
        {R"("tags": {"rotate": "90.0"})", 0},
        {R"("tags": {"rotate": " 90"})", 0},
        {R"("tags": {"rotate": "90 "})", 0},
        {R"("tags": {"rotate": "+"})", 0},
        {R"("tags": {"rotate": "-"})", 0},
        {R"("tags": {"rotate": "+-90"})", 0},
        {R"("tags": {"rotate": "9223372036854775808"})", 0},
        {R"("tags": {"rotate": "-9223372036854775808"})", std::numeric_limits<std::int64_t>::min()},
    };
    for (const Row& row : rows)
        EXPECT_EQ(factsOfVideo(1920, 1080, row.rest).rotation, row.expected) << row.rest;
    EXPECT_EQ(factsOfVideo(1080, 1920, R"("tags": {"rotate": "+270"})").rotation, 270);
}

TEST(ProbeDuration, ComesFromTheStreamElseFromTheFormatElseIsZero)
{
    struct Row {
        const char* ofStream;
        const char* ofFormat;
        double expected;
    };
    const Row rows[] = {
        {R"("12.5")", R"("8.000000")", 12.5},
        {R"("12.5")", "null", 12.5},
        {"null", R"("8.000000")", 8},
        {R"("N/A")", R"("8.000000")", 8},
        {R"("")", R"("8.000000")", 8},
        {R"(" 12.5")", R"("8.000000")", 8},
        {R"("12.5 ")", R"("8.000000")", 8},
        {R"("12,5")", R"("8.000000")", 8},
        {R"("1e999")", R"("8.000000")", 8},
        {R"("nan")", R"("inf")", 0},
        {R"("0")", R"("8.000000")", 0},
        {R"("-1")", R"("8.000000")", -1},
        {"null", R"("1e999")", 0},
        {"null", R"("N/A")", 0},
        {"null", "null", 0},
    };
    for (const Row& row : rows) {
        const std::string json =
            std::string(R"({"streams": [{"codec_type": "video", "width": 2, "height": 1, "duration": )") +
            row.ofStream + R"(}], "format": {"duration": )" + row.ofFormat + "}}";
        EXPECT_EQ(factsOf(json).duration, row.expected) << json;
    }
    EXPECT_EQ(factsOfVideo(2, 1).duration, 0) << "no format at all";
}

TEST(ProbeCodecs, AreUnknownOrAbsentWhenNotReported)
{
    const MediaInfo silent = factsOfVideo(1920, 1080);
    EXPECT_EQ(silent.videoCodec, "unknown");
    EXPECT_EQ(silent.audioCodec, std::nullopt);
    const MediaInfo nameless = factsOf(R"({"streams": [
        {"codec_type": "video", "codec_name": "", "width": 2, "height": 1},
        {"codec_type": "audio"}, {"codec_type": "audio", "codec_name": "aac"}]})");
    EXPECT_EQ(nameless.videoCodec, "");
    EXPECT_EQ(nameless.audioCodec, std::nullopt);
}

} // namespace stackreel
