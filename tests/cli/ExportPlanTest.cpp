#include "cli/ExportPlan.h"

#include "cli/CliError.h"
#include "media/MediaToolError.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace stackreel
{

namespace
{

const MediaInfo clip = {
    .width = 1920, .height = 1080, .rotation = 0, .duration = 10, .videoCodec = "h264", .audioCodec = "aac"};

ExportOptions optionsFor(const std::filesystem::path& source)
{
    ExportOptions options;
    options.source = source;
    return options;
}

std::string failure(const ExportOptions& options, const MediaInfo& media,
                    const std::vector<AudioTrack>& tracks = {})
{
    try {
        planExport(options, media, tracks);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

TEST(ExportPlan, UsesTheWholeClipAndTheDefaultCropsWithoutOptions)
{
    const ExportRequest request = planExport(optionsFor("/clips/Beach day.final.MOV"), clip);
    EXPECT_EQ(request.input, "/clips/Beach day.final.MOV");
    EXPECT_EQ(request.output, "/clips/Beach day.final-vertical.mp4");
    EXPECT_EQ(request.media, clip);
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 1.125);
    EXPECT_EQ(request.top, top);
    EXPECT_EQ(request.bottom, bottom);
    EXPECT_EQ(request.settings, ExportSettings());
    EXPECT_EQ(request.trimStart, 0);
    EXPECT_EQ(request.trimEnd, 10);
}

TEST(ExportPlan, KeepsTheDefaultOfTheCropThatIsNotGiven)
{
    ExportOptions options = optionsFor("/a.mov");
    options.choices.aspect = OutputAspect::square;
    options.choices.bottom = CropRegion{.x = 0, .y = 0, .width = 1, .height = 1};
    const ExportRequest request = planExport(options, clip);
    EXPECT_EQ(request.top, CropRegion::initialPair(16.0 / 9, 2.0).first);
    EXPECT_EQ(request.bottom, *options.choices.bottom);
}

TEST(ExportPlan, MakesPathsAbsolute)
{
    const TemporaryDirectory directory;
    const ScopedWorkingDirectory working(directory.path());
    ExportOptions options = optionsFor("-x.mov");
    EXPECT_EQ(planExport(options, clip).input, directory / "-x.mov");
    EXPECT_EQ(planExport(options, clip).output, directory / "-x-vertical.mp4");
    options.destination = "-o.mp4";
    EXPECT_EQ(planExport(options, clip).output, directory / "-o.mp4");
}

TEST(ExportPlan, RefusesADestinationThatIsNotMp4)
{
    const TemporaryDirectory directory;
    ExportOptions options = optionsFor("/a.mov");
    for (const char* name : {"/b.mp4", "/b.MP4", "/b.x.mP4"}) {
        options.destination = name;
        EXPECT_EQ(planExport(options, clip).output, name);
    }
    for (const char* name : {"/b", "/b.mov", "/b.mp4.mov", "/.mp4", "/mp4", "/b.mp4 "}) {
        options.destination = name;
        EXPECT_THROW(planExport(options, clip), UsageError) << name;
    }
    options.destination = directory.path();
    EXPECT_NO_THROW(planExport(options, clip));
}

TEST(ExportPlan, RefusesAStartAfterTheEndOfTheClip)
{
    ExportOptions options = optionsFor("/a.mov");
    options.choices.from = 9.99;
    options.choices.to = 1000;
    EXPECT_NO_THROW(planExport(options, clip));
    options.choices.from = 10;
    EXPECT_EQ(failure(options, clip),
              "The start at 10.00 s lies behind the end of the video, which lasts 10.00 s.");
}

TEST(ExportPlan, TakesTheChosenSoundTrack)
{
    std::vector<AudioTrack> tracks(3);
    tracks[0].codec = "aac";
    tracks[1].codec = "ac3";
    ExportOptions options = optionsFor("/a.mov");
    options.choices.audioTrack = 2;
    const ExportRequest request = planExport(options, clip, tracks);
    EXPECT_EQ(request.audioTrack, 1);
    EXPECT_EQ(request.media.audioCodec, "ac3");
    EXPECT_EQ(Recipe::of(request).audioTrack, 2);
    options.choices.audioTrack = 3;
    EXPECT_EQ(failure(options, clip, tracks), "The codec of sound track 3 is unknown.");
    options.choices.audioTrack = 4;
    EXPECT_EQ(failure(options, clip, tracks), "The video has no sound track 4. It has 3.");
    tracks.resize(1);
    EXPECT_EQ(failure(options, clip, tracks), "The video has no sound track 4. It has one only.");
    EXPECT_EQ(failure(options, clip, {}), "The video has no sound track 4. It has no sound.");
    options.choices.sound = false;
    EXPECT_EQ(failure(options, clip, {}), "");
}

TEST(ExportPlan, RefusesImpossibleFrameSizes)
{
    for (const std::int64_t side : {std::int64_t{0}, std::int64_t{-2},
                                    std::numeric_limits<std::int64_t>::max(), std::int64_t{1} << 31}) {
        MediaInfo media = clip;
        media.height = side;
        EXPECT_EQ(failure(optionsFor("/a.mov"), media), "The video details could not be read.") << side;
        std::swap(media.width, media.height);
        EXPECT_EQ(failure(optionsFor("/a.mov"), media), "The video details could not be read.") << side;
    }
}

TEST(ExportPlan, BuildsACommandForExtremeSizes)
{
    MediaInfo media = clip;
    media.width = std::numeric_limits<std::int32_t>::max();
    media.height = 1;
    ExportOptions options = optionsFor("/a.mov");
    options.choices.aspect = OutputAspect::custom;
    options.choices.size = PixelSize{.width = 16384, .height = 2};
    EXPECT_FALSE(ExportCommandBuilder::build(planExport(options, media)).arguments.empty());
    options.choices.size = PixelSize{.width = 2, .height = 16384};
    EXPECT_FALSE(ExportCommandBuilder::build(planExport(options, media)).arguments.empty());
}

TEST(ExportPlan, RefusesAnUnknownLengthWithARemedy)
{
    MediaInfo media = clip;
    EXPECT_NO_THROW(requireKnownLength(media, "/a.mov"));
    for (const double duration : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        media.duration = duration;
        EXPECT_THROW(requireKnownLength(media, "/a.mov"), CliError) << duration;
        EXPECT_NO_THROW(planExport(optionsFor("/a.mov"), media)) << duration;
    }
}

} // namespace

} // namespace stackreel
