#include "framing/ExportCommandBuilder.h"

#include "tests/framing/Generators.h"
#include "tests/support/ScopedLocale.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace stackreel
{

namespace
{

using Arguments = std::vector<std::string>;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

/// An export of a whole 16:9 clip of ten seconds with sound, with the default regions.
ExportRequest request()
{
    ExportRequest request;
    request.input = "/clips/Beach day.MOV";
    request.output = "/clips/Beach day-vertical.mp4";
    request.media = {.width = 1920,
                     .height = 1080,
                     .rotation = 0,
                     .duration = 10,
                     .videoCodec = "h264",
                     .audioCodec = "aac"};
    std::tie(request.top, request.bottom) = CropRegion::initialPair(16.0 / 9.0, 1.125);
    request.trimStart = 0;
    request.trimEnd = 10;
    return request;
}

Arguments argumentsOf(const ExportRequest& request)
{
    return ExportCommandBuilder::build(request).arguments;
}

/// The argument that follows the first argument equal to `name`.
std::string valueOf(const ExportRequest& request, const std::string& name)
{
    const Arguments arguments = argumentsOf(request);
    const auto found = std::find(arguments.begin(), arguments.end(), name);
    return found == arguments.end() || found + 1 == arguments.end() ? "(none)" : *(found + 1);
}

bool mentions(const ExportRequest& request, const std::string& argument)
{
    const Arguments arguments = argumentsOf(request);
    return std::find(arguments.begin(), arguments.end(), argument) != arguments.end();
}

const char* const portraitGraph =
    "[0:v:0]split=2[topSource][bottomSource];"
    "[topSource]crop=w=874:h=776:x=76:y=150,scale=1080:960:flags=bicubic,setsar=1,setpts=PTS-STARTPTS[top];"
    "[bottomSource]crop=w=874:h=776:x=968:y=150,scale=1080:960:flags=bicubic,setsar=1,setpts=PTS-STARTPTS["
    "bottom];"
    "[top][bottom]vstack=inputs=2,format=yuv420p[video]";

} // namespace

TEST(ExportCommandBuilder, HasExactlyTheseArgumentsWithSound)
{
    EXPECT_EQ(argumentsOf(request()), (Arguments{"-hide_banner",
                                                 "-y",
                                                 "-ss",
                                                 "0.000",
                                                 "-i",
                                                 "/clips/Beach day.MOV",
                                                 "-t",
                                                 "10.000",
                                                 "-filter_complex",
                                                 portraitGraph,
                                                 "-map",
                                                 "[video]",
                                                 "-map",
                                                 "0:a:0",
                                                 "-c:v",
                                                 "h264_videotoolbox",
                                                 "-allow_sw",
                                                 "1",
                                                 "-b:v",
                                                 "12M",
                                                 "-movflags",
                                                 "+faststart",
                                                 "-af",
                                                 "asetpts=PTS-STARTPTS",
                                                 "-c:a",
                                                 "aac",
                                                 "-b:a",
                                                 "192k",
                                                 "-metadata:s:v:0",
                                                 "rotate=0",
                                                 "/clips/Beach day-vertical.mp4"}));
}

TEST(ExportCommandBuilder, HasExactlyTheseArgumentsWithoutSound)
{
    ExportRequest silent = request();
    silent.settings.includeAudio = false;
    const Arguments expected = {"-hide_banner",
                                "-y",
                                "-ss",
                                "0.000",
                                "-i",
                                "/clips/Beach day.MOV",
                                "-t",
                                "10.000",
                                "-filter_complex",
                                portraitGraph,
                                "-map",
                                "[video]",
                                "-c:v",
                                "h264_videotoolbox",
                                "-allow_sw",
                                "1",
                                "-b:v",
                                "12M",
                                "-movflags",
                                "+faststart",
                                "-an",
                                "-metadata:s:v:0",
                                "rotate=0",
                                "/clips/Beach day-vertical.mp4"};
    EXPECT_EQ(argumentsOf(silent), expected);
    ExportRequest soundless = request();
    soundless.media.audioCodec = std::nullopt;
    EXPECT_EQ(argumentsOf(soundless), expected) << "a source without sound";
}

TEST(ExportCommandBuilder, HasSoundWhenItIsIncludedAndTheSourceHasIt)
{
    for (const bool wanted : {false, true})
        for (const bool there : {false, true}) {
            ExportRequest modified = request();
            modified.settings.includeAudio = wanted;
            if (!there)
                modified.media.audioCodec = std::nullopt;
            const bool carried = wanted && there;
            EXPECT_EQ(ExportCommandBuilder::carriesAudio(modified), carried);
            EXPECT_EQ(mentions(modified, "0:a:0"), carried);
            EXPECT_EQ(mentions(modified, "-af"), carried);
            EXPECT_EQ(mentions(modified, "-an"), !carried);
        }
    ExportRequest nameless = request();
    nameless.media.audioCodec = "";
    EXPECT_TRUE(ExportCommandBuilder::carriesAudio(nameless))
        << "a codec with an empty name is still a codec";
}

TEST(ExportCommandBuilder, TrimsToTheRange)
{
    struct Row {
        double duration;
        double trimStart;
        double trimEnd;
        const char* start;
        const char* length;
    };
    const Row rows[] = {
        {10, -3, 5, "0.000", "5.000"},       {10, 9.9, 9.95, "9.750", "0.250"},
        {0.1, 0, 0.1, "0.000", "0.250"},     {10, 1.23456, 5, "1.235", "3.765"},
        {10, 0.0004, 10, "0.000", "10.000"}, {10, 0.0625, 1, "0.062", "0.938"},
        {10, 2.0005, 3, "2.001", "0.999"},   {1234567.891, 1234.5, 1234567, "1234.500", "1233332.500"},
        {0, 0, 0, "0.000", "0.250"},
    };
    for (const Row& row : rows) {
        ExportRequest modified = request();
        modified.media.duration = row.duration;
        modified.trimStart = row.trimStart;
        modified.trimEnd = row.trimEnd;
        EXPECT_EQ(valueOf(modified, "-ss"), row.start) << row.trimStart;
        EXPECT_EQ(valueOf(modified, "-t"), row.length) << row.trimStart;
    }
}

RC_GTEST_PROP(ExportCommandBuilder, WritesTimesLikePrintfForAnyFiniteTime, ())
{
    ExportRequest modified = request();
    modified.media.duration = *rc::gen::oneOf(ratioBetween(0.25, 1e7), ratioBetween(1e10, 1.7e308));
    modified.trimStart = *fraction() * modified.media.duration;
    modified.trimEnd = modified.media.duration;
    const double start = std::min(modified.trimStart, modified.media.duration - 0.25);
    std::array<char, 400> expected{};
    std::snprintf(expected.data(), expected.size(), "%.3f", start);
    RC_ASSERT(valueOf(modified, "-ss") == std::string(expected.data()));
}

TEST(ExportCommandBuilder, ScalesEachCropToItsHalf)
{
    struct Row {
        OutputAspect aspect;
        std::int64_t customWidth;
        std::int64_t customHeight;
        const char* scale;
    };
    const Row rows[] = {
        {OutputAspect::portrait, 0, 0, ",scale=1080:960:"},
        {OutputAspect::feed, 0, 0, ",scale=1080:675:"},
        {OutputAspect::square, 0, 0, ",scale=1080:540:"},
        {OutputAspect::custom, 1001, 1001, ",scale=1000:500:"},
        {OutputAspect::custom, -5, 1, ",scale=2:1:"},
        {OutputAspect::custom, 10, 6, ",scale=10:3:"},
        {OutputAspect::custom, 12345678, 12345678, ",scale=12345678:6172839:"},
        {OutputAspect::custom, largest, largest, ",scale=9223372036854775806:4611686018427387903:"},
    };
    for (const Row& row : rows) {
        ExportRequest modified = request();
        modified.settings.aspect = row.aspect;
        modified.settings.customWidth = row.customWidth;
        modified.settings.customHeight = row.customHeight;
        const std::string graph = valueOf(modified, "-filter_complex");
        const std::size_t first = graph.find(row.scale);
        ASSERT_NE(first, std::string::npos) << graph;
        EXPECT_NE(graph.find(row.scale, first + 1), std::string::npos) << graph;
    }
}

TEST(ExportCommandBuilder, CropsInTheDisplayedOrientation)
{
    ExportRequest rotated = request();
    rotated.media.width = 1080;
    rotated.media.height = 1920;
    rotated.media.rotation = -90;
    EXPECT_EQ(argumentsOf(rotated), argumentsOf(request()));
}

TEST(ExportCommandBuilder, PassesPathsByteForByte)
{
    for (const char* name : {"/a b/ü 東京.mov", "/-dash.mov", "/it's \"quoted\" 100%.mov", "/new\nline.mov",
                             "/back\\slash:colon;[0:v].mov", "/\xFF\xFE invalid.mov", "/"}) {
        ExportRequest modified = request();
        modified.input = name;
        modified.output = std::string(name) + "-vertical.mp4";
        const Arguments arguments = argumentsOf(modified);
        EXPECT_EQ(valueOf(modified, "-i"), name);
        EXPECT_EQ(arguments.back(), std::string(name) + "-vertical.mp4");
        EXPECT_EQ(arguments.size(), argumentsOf(request()).size());
    }
}

TEST(ExportCommandBuilder, IsTheSameInALocaleWithADecimalComma)
{
    ExportRequest modified = request();
    modified.media.width = 1234567;
    modified.media.height = 1080;
    modified.media.duration = 12345.678;
    modified.trimStart = 1234.56789;
    modified.trimEnd = 9999;
    const Arguments expected = argumentsOf(modified);
    const ScopedCommaLocale locale;
    EXPECT_EQ(argumentsOf(modified), expected);
    EXPECT_EQ(valueOf(modified, "-ss"), "1234.568");
}

TEST(ExportCommandBuilder, ChangesOnlyTheMappedSoundStreamForAnotherTrack)
{
    ExportRequest modified = request();
    modified.audioTrack = 2;
    Arguments expected = argumentsOf(request());
    std::replace(expected.begin(), expected.end(), std::string("0:a:0"), std::string("0:a:2"));
    ASSERT_NE(expected, argumentsOf(request()));
    EXPECT_EQ(argumentsOf(modified), expected);
}

} // namespace stackreel
