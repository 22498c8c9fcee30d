#include "tests/model/SourceLoadingTest.h"

#include "media/MediaToolError.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace stackreel
{

namespace
{

using ChoosingASource = SourceLoadingTest;
using LoadingASource = SourceLoadingTest;

} // namespace

TEST_F(ChoosingASource, ShowsAPanelForOneFileOfAnyKind)
{
    model().chooseSource();
    EXPECT_EQ(happened(), Lines{"show open panel"});
    const OpenPanelRequest& request = m_world.openPanel->request();
    EXPECT_EQ(request.title, "Choose a horizontal video");
    EXPECT_EQ(request.prompt, "Choose Video");
    EXPECT_TRUE(request.canChooseFiles);
    EXPECT_FALSE(request.canChooseDirectories);
    EXPECT_FALSE(request.allowsMultipleSelection);
    EXPECT_EQ(request.allowedContentTypes, (std::vector<ContentType>{ContentType::audiovisualContent,
                                                                     ContentType::movie, ContentType::data}));
}

TEST_F(ChoosingASource, ChangesNothingWithoutAChoice)
{
    const PanelResponse responses[] = {{.accepted = false, .url = std::nullopt},
                                       {.accepted = false, .url = "/clips/a.mov"},
                                       {.accepted = true, .url = std::nullopt}};
    for (const PanelResponse& response : responses) {
        model().chooseSource();
        happened();
        m_world.openPanel->answer(response);
        runQueuedTasks();
        EXPECT_EQ(happened(), Lines());
    }
}

TEST_F(ChoosingASource, LoadsFromATaskOfItsOwn)
{
    model().chooseSource();
    happened();
    m_world.openPanel->choose("/clips/a.mov");
    EXPECT_EQ(happened(), Lines()) << "within the panel's answer";
    runQueuedTasks();
    EXPECT_EQ(model().phase(), Phase::preparing());
}

TEST_F(ChoosingASource, WorksInEveryPhase)
{
    const Phase phases[] = {Phase::empty(),     Phase::preparing(),      Phase::ready(),
                            Phase::exporting(), Phase::complete("/out"), Phase::failed("x")};
    for (const Phase& phase : phases) {
        model().setPhase(phase);
        choose("/clips/a.mov");
        EXPECT_EQ(model().phase(), Phase::preparing());
    }
}

TEST_F(ChoosingASource, DoesNothingForAModelThatIsGone)
{
    model().chooseSource();
    model().chooseSource();
    m_world.openPanel->choose("/clips/queued.mov");
    destroyModel();
    m_world.openPanel->choose("/clips/late.mov");
    runQueuedTasks();
    EXPECT_EQ(m_world.inspections.size(), 0U);
}

TEST_F(LoadingASource, GoesStepByStep)
{
    choose("/clips/Beach day.MOV");
    EXPECT_EQ(happened(), joined({"show open panel"}, joined(forgotten("/clips/Beach day.MOV"),
                                                             {"player none", "previewPlaying false",
                                                              "inspect 1: /clips/Beach day.MOV"})));

    m_world.inspections.back().task().complete(clip(20));
    EXPECT_EQ(happened(), Lines{"preview 1: /clips/Beach day.MOV"}) << "the facts are not published yet";

    m_world.previews.back().task().complete("/tmp/Stackreel/proxy.mp4");
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 1.125);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
    Lines steps = happened();
    ASSERT_EQ(steps.size(), 16U);
    EXPECT_EQ(steps.at(2).substr(0, 10), "topRegion ");
    EXPECT_EQ(steps.at(3).substr(0, 13), "bottomRegion ");
    steps.erase(steps.begin() + 2, steps.begin() + 4);
    EXPECT_EQ(steps, (Lines{"mediaInfo 1920 × 1080, 20 s", "trimEnd 20", "make player 1", "player 1: mute",
                            "player 1: at item end none", "player player 1",
                            "player 1: observe every 30/600 as 1", "player 1: remove all items",
                            "make looper 1 on player 1 for /tmp/Stackreel/proxy.mp4 from 0/600 for 12000/600",
                            "currentTime 0", "player 1: seek to 0/600", "player 1: play",
                            "previewPlaying true", "phase ready"}));

    runQueuedTasks();
    EXPECT_EQ(happened(), Lines{"thumbnails 1: /tmp/Stackreel/proxy.mp4, 20 s, 12"});
}

TEST_F(LoadingASource, LeavesTheRegionsAndThePlayerOutWhilePreparing)
{
    load(20);
    model().setTopRegion({.x = 0.1, .y = 0.1, .width = 0.5, .height = 0.5});
    const CropRegion top = model().topRegion();
    const CropRegion bottom = model().bottomRegion();
    choose("/clips/b.mov");
    EXPECT_EQ(model().phase(), Phase::preparing());
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_FALSE(model().previewPlaying());
    EXPECT_TRUE(model().timelineThumbnails().empty());
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
}

TEST_F(LoadingASource, FitsTheRegionsToTheOutputThatWasChosenBefore)
{
    model().setSettings({.aspect = OutputAspect::square});
    load(20);
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 2);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
}

TEST_F(LoadingASource, FitsTheRegionsToThePictureAsDisplayed)
{
    // Coded upright, displayed 1920 wide.
    MediaInfo turned = clip(20);
    std::swap(turned.width, turned.height);
    turned.rotation = 90;
    choose("/clips/turned.mov");
    m_world.inspections.back().task().complete(turned);
    m_world.previews.back().task().complete("/clips/turned.mov");
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 1.125);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
}

TEST_F(LoadingASource, LoopsWhatTheDurationLeaves)
{
    struct Row {
        double duration;
        const char* range;
    };
    // A length that is unknown or very short gives the least loop.
    const Row rows[] = {{20, "from 0/600 for 12000/600"}, {0.2, "from 0/600 for 120/600"},
                        {0.05, "from 0/600 for 30/600"},  {0.01, "from 0/600 for 30/600"},
                        {0, "from 0/600 for 30/600"},     {7200.5, "from 0/600 for 4320300/600"}};
    for (const Row& row : rows) {
        choose("/clips/a.mov");
        happened();
        finishLoad(row.duration);
        EXPECT_EQ(model().trimEnd(), row.duration);
        EXPECT_EQ(model().phase(), Phase::ready());
        const Lines lines = happened();
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.ends_with(row.range);
        })) << row.range;
    }
}

TEST_F(LoadingASource, FailsWithTheMessageOfTheProbe)
{
    choose("/clips/tall.mov");
    happened();
    m_world.inspections.back().task().fail(MediaToolError::verticalSource());
    EXPECT_EQ(happened(),
              Lines{"phase failed: Choose a horizontal video. Stackreel only stacks crops from horizontal "
                    "sources."});
    EXPECT_EQ(model().sourceURL(), "/clips/tall.mov");
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(model().trimEnd(), 0);
    EXPECT_EQ(m_world.previews.size(), 0U) << "no preview is made";
}

TEST_F(LoadingASource, FailsWithTheMessageOfThePreview)
{
    choose("/clips/a.mov");
    m_world.inspections.back().task().complete(clip(20));
    happened();
    m_world.previews.back().task().fail(MediaToolError::processFailed("FFmpeg", 1, ""));
    EXPECT_EQ(happened(), Lines{"phase failed: FFmpeg could not process this video."});
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(model().trimEnd(), 0);
}

TEST_F(LoadingASource, LeavesNoOldPlayerWhenItFails)
{
    load(20);
    choose("/clips/b.mov");
    m_world.inspections.back().task().fail(std::runtime_error("no"));
    EXPECT_EQ(model().phase(), Phase::failed("no"));
    EXPECT_EQ(model().player(), nullptr);
    model().endTimelineInteraction(true);
    EXPECT_FALSE(model().previewPlaying());
}

} // namespace stackreel
