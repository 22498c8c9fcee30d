#include "framing/CropRegion.h"
#include "media/CancellationError.h"
#include "media/MediaProbe.h"
#include "media/MediaToolError.h"
#include "model/SourceExport.h"
#include "tests/integration/Clips.h"
#include "tests/integration/Pictures.h"
#include "tests/support/Awaited.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

namespace stackreel
{

namespace
{

class ExportTest : public testing::Test
{
protected:
    /// The export of a whole clip, with the regions that a newly loaded source starts with.
    ExportRequest requestFor(const std::filesystem::path& clip, ExportSettings settings = {}) const
    {
        const MediaInfo media = runToEnd(MediaProbe::inspect(clip));
        const auto [top, bottom] =
            CropRegion::initialPair(media.displayAspect(), panelAspect(settings.size()));
        return {.input = clip,
                .output = m_folder / "out.mp4",
                .media = media,
                .top = top,
                .bottom = bottom,
                .settings = settings,
                .trimStart = 0,
                .trimEnd = media.duration};
    }

    std::filesystem::path clip(const ClipRecipe& recipe, const std::string& name = "clip.mov") const
    {
        const auto file = m_folder / name;
        makeClip(file, recipe);
        return file;
    }

    ProbeStream streamOf(const std::filesystem::path& file, const std::string& type) const
    {
        for (const ProbeStream& stream : runToEnd(MediaProbe::report(file)).streams)
            if (stream.codecType == type)
                return stream;
        return {};
    }

    /// Compares the halves of the export with crops of an upright copy of the source.
    void expectHalvesShow(const ExportRequest& request, const std::filesystem::path& upright) const
    {
        const PixelSize size = request.settings.size();
        const PixelCrop top = request.top.sourcePixels(request.media);
        const PixelCrop bottom = request.bottom.sourcePixels(request.media);
        const auto alike = [&](Half half, PixelCrop crop) {
            return similarity(request.output, size, half, upright, crop, request.trimStart);
        };
        EXPECT_GT(alike(Half::top, top), 0.95);
        EXPECT_GT(alike(Half::bottom, bottom), 0.95);
        // The upper half must not resemble the other crop. Otherwise the two checks above would prove
        // nothing.
        EXPECT_LT(alike(Half::top, bottom), 0.9);
    }

    TemporaryDirectory m_folder;
};

class RotatedExportTest : public ExportTest, public testing::WithParamInterface<int>
{
};

TEST_P(RotatedExportTest, ShowsBothCropsUprightForAnyRotation)
{
    const auto upright = clip({.seconds = 1}, "upright.mov");
    const auto file = clip({.seconds = 1, .rotation = GetParam()});
    const ExportRequest request = requestFor(file);
    EXPECT_EQ((request.media.rotation + 360) % 360, GetParam()) << "the clip is turned as its recipe says";
    EXPECT_EQ(request.media.displayedWidth(), 640);
    EXPECT_EQ(request.media.displayedHeight(), 360);
    EXPECT_EQ(request.media.isQuarterTurned(), GetParam() % 180 == 90);
    runToEnd(exportSource(request));

    const ProbeStream video = streamOf(request.output, "video");
    EXPECT_EQ(video.codecName, "h264");
    EXPECT_EQ(video.width, 1080);
    EXPECT_EQ(video.height, 1920);
    EXPECT_FALSE(video.sideDataList) << "nothing may turn the picture again";
    EXPECT_EQ(streamOf(request.output, "audio").codecName, "aac");
    expectHalvesShow(request, upright);
}

INSTANTIATE_TEST_SUITE_P(Rotations, RotatedExportTest, testing::Values(0, 90, 180, 270));

TEST_F(ExportTest, TakesCropsAtTheirPixelsFromAFrameOfOddSize)
{
    const auto file = clip({.width = 641, .height = 359, .seconds = 1, .audio = false}, "odd.mkv");
    ExportRequest request =
        requestFor(file, {.aspect = OutputAspect::custom, .customWidth = 361, .customHeight = 641});
    request.top = {.x = 0.94, .y = 0.94, .width = 0.06, .height = 0.06};
    request.bottom = {.x = 0.1, .y = 0.2, .width = 0.5, .height = 0.5};
    runToEnd(exportSource(request));

    const ProbeStream video = streamOf(request.output, "video");
    EXPECT_EQ(video.width, 360);
    EXPECT_EQ(video.height, 640);
    EXPECT_GT(similarity(request.output, {360, 640}, Half::bottom, file,
                         {.x = 64, .y = 70, .width = 320, .height = 178}, 0),
              0.95);
}

TEST_F(ExportTest, StacksHalvesOfOddHeightWithoutLoss)
{
    const auto file = clip({.width = 1280, .height = 720, .seconds = 1}, "landscape.mp4");
    for (const ExportSettings& settings :
         {ExportSettings{.aspect = OutputAspect::feed},
          ExportSettings{.aspect = OutputAspect::custom, .customWidth = 720, .customHeight = 1278}}) {
        const ExportRequest request = requestFor(file, settings);
        ASSERT_EQ(settings.size().height / 2 % 2, 1);
        runToEnd(exportSource(request));
        const ProbeStream video = streamOf(request.output, "video");
        EXPECT_EQ(video.width, settings.size().width);
        EXPECT_EQ(video.height, settings.size().height);
        expectHalvesShow(request, file);
    }
}

TEST_F(ExportTest, KeepsExactlyTheFramesOfTheTrimmedRange)
{
    const auto file = clip({.width = 320, .height = 180, .seconds = 4, .numbered = true});
    ExportRequest request =
        requestFor(file, {.aspect = OutputAspect::custom, .customWidth = 90, .customHeight = 160});
    request.trimStart = 1;
    request.trimEnd = 2.4;
    runToEnd(exportSource(request));

    const std::vector<int> source = greys(file);
    ASSERT_EQ(source.size(), 100U);
    const std::vector<int> exported = greys(request.output);
    ASSERT_EQ(exported.size(), 35U);
    for (std::size_t index = 0; index < exported.size(); ++index)
        EXPECT_NEAR(exported[index], source[25 + index], 2) << "frame " << index;
    const auto duration = streamOf(request.output, "video").duration;
    ASSERT_TRUE(duration);
    EXPECT_NEAR(std::atof(duration->c_str()), 1.4, 0.001);
}

TEST_F(ExportTest, ContainsSoundWhenItIsRequestedAndPresent)
{
    const ClipRecipe recipe = {.width = 320, .height = 180, .seconds = 1};
    const ExportSettings settings = {.aspect = OutputAspect::custom, .customWidth = 90, .customHeight = 160};
    ExportRequest request = requestFor(clip(recipe), settings);
    runToEnd(exportSource(request));
    EXPECT_EQ(streamOf(request.output, "audio").codecName, "aac");
    EXPECT_GT(peakLevel(request.output), -30);

    request.settings.includeAudio = false;
    runToEnd(exportSource(request));
    EXPECT_FALSE(streamOf(request.output, "audio").codecType);
}

TEST_F(ExportTest, IsSilentForAClipWithoutSound)
{
    const ClipRecipe recipe = {.width = 320, .height = 180, .seconds = 1, .audio = false};
    const ExportRequest request = requestFor(clip(recipe), {.aspect = OutputAspect::square});
    EXPECT_FALSE(request.media.audioCodec);
    runToEnd(exportSource(request));
    EXPECT_FALSE(streamOf(request.output, "audio").codecType);
    EXPECT_EQ(streamOf(request.output, "video").height, 1080);
}

TEST_F(ExportTest, AcceptsAnyFileName)
{
    const ExportSettings settings = {.aspect = OutputAspect::custom, .customWidth = 90, .customHeight = 160};
    const auto first = clip({.width = 320, .height = 180, .seconds = 0.5}, "plain.mov");
    for (const char* name : {"with blank.mov", "quote'\"s.mov", "100%d %s.mov", "-dash.mov", "été 猫 🎬.mov",
                             "new\nline.mov", "semi;colon:[x],y.mov", "\xff\xfe.mov"}) {
        SCOPED_TRACE(name);
        const auto file = m_folder / name;
        std::filesystem::copy_file(first, file);
        ExportRequest request = requestFor(file, settings);
        request.output = m_folder / (std::string(name) + "-vertical.mp4");
        runToEnd(exportSource(request));
        EXPECT_EQ(streamOf(request.output, "video").codecName, "h264");
    }
}

TEST_F(ExportTest, RefusesAVerticalSource)
{
    EXPECT_THROW(requestFor(clip({.width = 180, .height = 320, .seconds = 0.5})), MediaToolError);
    EXPECT_THROW(requestFor(clip({.width = 320, .height = 320, .seconds = 0.5})), MediaToolError);
}

TEST_F(ExportTest, ReportsTheToolsMessageWhenItFails)
{
    ExportRequest request = requestFor(clip({.width = 320, .height = 180, .seconds = 0.5}));
    request.output = m_folder / "missing folder" / "out.mp4";
    try {
        runToEnd(exportSource(request));
        FAIL() << "an export into a missing folder cannot succeed";
    } catch (const MediaToolError& error) {
        EXPECT_NE(std::string(error.what()).find("No such file or directory"), std::string::npos)
            << error.what();
    }
}

TEST_F(ExportTest, EndsItsChildWhenCancelledWithoutAFailure)
{
    const ExportRequest request =
        requestFor(clip({.width = 1280, .height = 720, .seconds = 20, .audio = false}));
    std::stop_source stop;
    std::atomic<bool> launched = false;
    Awaited<ProbeDocument> running(
        exportSource(request, stop.get_token(), [&](const std::filesystem::path&) { launched = true; }));
    ASSERT_TRUE(eventually([&] { return launched.load() && std::filesystem::exists(request.output); }));
    stop.request_stop();
    EXPECT_THROW(running.result(), CancellationError);
}

} // namespace

} // namespace stackreel
