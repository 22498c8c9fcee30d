#include "tests/player/RealModelTest.h"

#include "media/MediaProbe.h"
#include "player/pictures/FrameScaler.h"
#include "player/pictures/RgbConverter.h"
#include "player/source/BlockingReader.h"
#include "player/source/SampleTiming.h"
#include "system/PrivateFolder.h"
#include "tests/player/Repetition.h"

#include <cmath>

namespace stackreel
{

namespace
{

/// Reports every file as not playable.
class RefusingStills : public GStreamerStills
{
public:
    bool isPlayable(const std::filesystem::path&, std::stop_token) override { return false; }
};

std::vector<std::filesystem::path> previewCopies()
{
    const auto folder = PrivateFolder::pathOfUser("Stackreel");
    std::vector<std::filesystem::path> files;
    if (std::filesystem::exists(folder))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// The numbers that the frames of a file show.
std::vector<int> numbersIn(const std::filesystem::path& file)
{
    std::vector<int> numbers;
    RgbConverter converter;
    FrameScaler scaler({0, 0});
    BlockingReader source(file, DecodePipeline::Content::pictures, {});
    while (const GstSamplePtr sample = source.next()) {
        const auto frame = scaler.scale(sample.get(), {}, sampleTime(sample.get()), 0);
        numbers.push_back(numberIn(converter.convert(*frame)));
    }
    return numbers;
}

} // namespace

TEST_F(RealModelTest, LoadsTrimsAndExportsAClip)
{
    load(clipWithSound);
    EXPECT_NEAR(model().trimEnd(), 6, 0.1);
    EXPECT_TRUE(model().previewPlaying());
    EXPECT_TRUE(eventually([&] { return model().currentTime() > 0.2; })) << "it plays at once";

    ASSERT_TRUE(eventually([&] { return !model().timelineThumbnails().empty(); }));
    ASSERT_EQ(model().timelineThumbnails().size(), 12U);
    for (std::size_t i = 0; i < 12; ++i) {
        const VideoFrame& image = model().timelineThumbnails()[i];
        EXPECT_EQ(image.width, 320);
        EXPECT_EQ(image.height, 180);
        EXPECT_NEAR(numberIn(image), (static_cast<double>(i) + 0.5) * 15, 15) << i;
    }

    trim(2, 2.5);
    EXPECT_EQ(model().trimStart(), 2);
    EXPECT_EQ(model().trimEnd(), 2.5);
    ASSERT_TRUE(showsNumber(74));
    output->forget();
    ASSERT_TRUE(showsFrames(100));
    EXPECT_TRUE(repeats(output->numbers(), 60, 74));
    for (int look = 0; look < 10; ++look) {
        const double before = model().currentTime();
        ASSERT_TRUE(eventually([&] { return model().currentTime() != before; }));
        EXPECT_GE(model().currentTime(), 2);
        EXPECT_LE(model().currentTime(), 2.5);
    }

    // Both halves show the whole picture, so the exported frames show their numbers.
    model().setSettings({.aspect = OutputAspect::custom, .customWidth = 640, .customHeight = 720});
    model().setTopRegion({.x = 0, .y = 0, .width = 1, .height = 1});
    model().setBottomRegion({.x = 0, .y = 0, .width = 1, .height = 1});
    startExport();
    EXPECT_FALSE(model().previewPlaying());
    ASSERT_TRUE(reaches(Phase::Kind::complete)) << model().phaseMessage();
    EXPECT_EQ(model().phaseMessage(), "Saved out.mp4");
    const ProbeDocument written = runToEnd(MediaProbe::report(destination));
    ASSERT_EQ(written.streams.size(), 2U);
    EXPECT_EQ(written.streams[0].codecName, "h264");
    EXPECT_EQ(written.streams[0].width, 640);
    EXPECT_EQ(written.streams[0].height, 720);
    EXPECT_EQ(written.streams[1].codecName, "aac");
    const std::vector<int> numbers = numbersIn(destination);
    EXPECT_EQ(numbers.size(), 15U);
    EXPECT_EQ(numbers.front(), 60);
    EXPECT_TRUE(repeats(numbers, 60, 74));

    output->forget();
    EXPECT_TRUE(model().previewPlaying());
    ASSERT_TRUE(showsFrames(30));
    EXPECT_TRUE(repeats(output->numbers(), 60, 74)) << "the preview continues in the same range";
}

TEST_F(RealModelTest, ShowsTheFrameAtThePlayheadWhenADragStops)
{
    load(clipWithSound);
    ASSERT_TRUE(eventually([&] { return model().currentTime() > 0.2; }));
    for (double stop : {5.01, 0.0, 3.3, 1.99}) {
        // Pause, so that the last frame shown is that of the last request.
        model().togglePreviewPlayback();
        ASSERT_FALSE(model().previewPlaying());
        model().beginTimelineInteraction();
        for (int step = 0; step < 50; ++step)
            model().seekPreview(std::fmod(stop + 0.37 * step, 6));
        model().seekPreview(stop);
        model().endTimelineInteraction(false);
        EXPECT_TRUE(showsNumber(static_cast<int>(std::floor(stop * 30 + 0.02)))) << stop;
        EXPECT_TRUE(eventually([&] { return model().currentTime() == stop; })) << stop;
        model().togglePreviewPlayback();
        ASSERT_TRUE(model().previewPlaying());
    }
}

TEST_F(RealModelTest, ReplacesOneClipByAnotherWhileThumbnailsOfTheFirstAreMade)
{
    load(clipWithSound);
    load(wide);
    ASSERT_TRUE(eventually([&] { return !model().timelineThumbnails().empty(); }));
    for (const VideoFrame& image : model().timelineThumbnails())
        EXPECT_EQ(image.height, 128) << "of the second clip";
    ASSERT_TRUE(eventually([&] { return model().currentTime() > 0.2; }));
    EXPECT_EQ(output->shown().back().width, 400);
    EXPECT_NEAR(model().trimEnd(), 2, 0.01);
}

TEST_F(RealModelTest, LoadsOneOfTwoClipsThatAreChosenAtOnce)
{
    choose(clipWithSound);
    choose(wide);
    ASSERT_TRUE(eventually([&] { return model().timelineThumbnails().size() == 12; }));
    EXPECT_EQ(model().phase(), Phase::ready());
    EXPECT_TRUE(eventually([&] { return model().currentTime() > 0.2; }));
}

TEST_F(RealModelTest, PlaysAPreviewCopyOfAnUnplayableSource)
{
    const auto before = previewCopies();
    makeModel(std::make_shared<RefusingStills>());
    load(clipWithSound);
    const auto after = previewCopies();
    EXPECT_EQ(before.size(), 0U);
    EXPECT_EQ(after.size(), 1U);
    ASSERT_TRUE(eventually([&] { return model().timelineThumbnails().size() == 12; }));
    trim(4, 4.5);
    ASSERT_TRUE(showsNumber(134));
    output->forget();
    ASSERT_TRUE(showsFrames(40));
    EXPECT_TRUE(repeats(output->numbers(), 120, 134));
}

TEST_F(RealModelTest, ShowsWhyAFileCannotBeLoaded)
{
    model().chooseSource();
    m_openPanel->choose(plainFile("words.mp4", "no film at all, only words"));
    ASSERT_TRUE(reaches(Phase::Kind::failed));
    EXPECT_FALSE(model().phaseMessage().empty());
    EXPECT_EQ(model().player(), nullptr);
    load(wide);
    EXPECT_TRUE(showsFrames(1));
}

} // namespace stackreel
