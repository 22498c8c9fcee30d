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
    EXPECT_EQ(takeJournal(), Lines{"show open panel"});
    const OpenPanelRequest& request = m_services.openPanel->request();
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
        takeJournal();
        m_services.openPanel->answer(response);
        runQueuedTasks();
        EXPECT_EQ(takeJournal(), Lines());
    }
}

TEST_F(ChoosingASource, LoadsFromTheEventLoop)
{
    model().chooseSource();
    takeJournal();
    m_services.openPanel->choose("/clips/a.mov");
    EXPECT_EQ(takeJournal(), Lines()) << "within the panel's answer";
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

TEST_F(ChoosingASource, DoesNothingAfterTheModelIsDestroyed)
{
    model().chooseSource();
    model().chooseSource();
    m_services.openPanel->choose("/clips/queued.mov");
    destroyModel();
    m_services.openPanel->choose("/clips/late.mov");
    runQueuedTasks();
    EXPECT_EQ(m_services.inspections.size(), 0U);
}

TEST_F(LoadingASource, SetsThePropertiesInOrder)
{
    choose("/clips/Beach day.MOV");
    EXPECT_EQ(takeJournal(), joined({"show open panel"}, joined(resetChanges("/clips/Beach day.MOV"),
                                                                {"player none", "previewPlaying false",
                                                                 "inspect 1: /clips/Beach day.MOV"})));

    m_services.inspections.back().task().complete(clip(20));
    EXPECT_EQ(takeJournal(), Lines{"preview 1: /clips/Beach day.MOV"}) << "the facts are not published yet";

    m_services.previews.back().task().complete("/tmp/Stackreel/copy.mp4");
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 1.125);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
    Lines steps = takeJournal();
    ASSERT_EQ(steps.size(), 14U);
    EXPECT_EQ(steps.at(2).substr(0, 10), "topRegion ");
    EXPECT_EQ(steps.at(3).substr(0, 13), "bottomRegion ");
    steps.erase(steps.begin() + 2, steps.begin() + 4);
    EXPECT_EQ(steps,
              (Lines{"mediaInfo 1920 × 1080, 20 s", "trimEnd 20", "make player 1", "player 1: mute",
                     "player player 1", "player 1: observe every 30/600 as 1",
                     "player 1: open /tmp/Stackreel/copy.mp4 from 0/600 for 12000/600", "currentTime 0",
                     "player 1: seek to 0/600", "player 1: play", "previewPlaying true", "phase ready"}));

    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines{"thumbnails 1: /tmp/Stackreel/copy.mp4, 20 s, 12"});
}

TEST_F(LoadingASource, KeepsTheRegionsAndRemovesThePlayerWhilePreparing)
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

TEST_F(LoadingASource, FitsTheRegionsToThePreviouslyChosenOutput)
{
    model().setSettings({.aspect = OutputAspect::square});
    load(20);
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 2);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
}

TEST_F(LoadingASource, FitsTheRegionsToTheDisplayedSize)
{
    // Coded as 1080 × 1920, displayed as 1920 × 1080.
    MediaInfo rotated = clip(20);
    std::swap(rotated.width, rotated.height);
    rotated.rotation = 90;
    choose("/clips/rotated.mov");
    m_services.inspections.back().task().complete(rotated);
    m_services.previews.back().task().complete("/clips/rotated.mov");
    const auto [top, bottom] = CropRegion::initialPair(16.0 / 9, 1.125);
    EXPECT_EQ(model().topRegion(), top);
    EXPECT_EQ(model().bottomRegion(), bottom);
}

TEST_F(LoadingASource, LoopsTheDurationOrTheMinimumLength)
{
    struct Row {
        double duration;
        const char* range;
    };
    // A clip whose duration is unknown or very short gets a loop of the minimum duration.
    const Row rows[] = {{20, "from 0/600 for 12000/600"}, {0.2, "from 0/600 for 120/600"},
                        {0.05, "from 0/600 for 30/600"},  {0.01, "from 0/600 for 30/600"},
                        {0, "from 0/600 for 30/600"},     {7200.5, "from 0/600 for 4320300/600"}};
    for (const Row& row : rows) {
        choose("/clips/a.mov");
        takeJournal();
        finishLoad(row.duration);
        EXPECT_EQ(model().trimEnd(), row.duration);
        EXPECT_EQ(model().phase(), Phase::ready());
        const Lines lines = takeJournal();
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.ends_with(row.range);
        })) << row.range;
    }
}

TEST_F(LoadingASource, FailsWithTheMessageOfTheProbe)
{
    choose("/clips/tall.mov");
    takeJournal();
    m_services.inspections.back().task().fail(MediaToolError::verticalSource());
    EXPECT_EQ(takeJournal(),
              Lines{"phase failed: Choose a horizontal video. Stackreel only stacks crops from horizontal "
                    "sources."});
    EXPECT_EQ(model().sourceURL(), "/clips/tall.mov");
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(model().trimEnd(), 0);
    EXPECT_EQ(m_services.previews.size(), 0U) << "no preview is made";
}

TEST_F(LoadingASource, FailsWithTheMessageOfThePreview)
{
    choose("/clips/a.mov");
    m_services.inspections.back().task().complete(clip(20));
    takeJournal();
    m_services.previews.back().task().fail(MediaToolError::processFailed("FFmpeg", 1, ""));
    EXPECT_EQ(takeJournal(), Lines{"phase failed: FFmpeg could not process this video."});
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(model().trimEnd(), 0);
}

TEST_F(LoadingASource, ShowsNothingOfTheSourceWhenNoPlayerCanBeMade)
{
    choose("/clips/a.mov");
    m_services.players->nextFails = true;
    finishLoad(20);
    runQueuedTasks();
    EXPECT_EQ(model().phase(), Phase::failed("No thread can be started."));
    EXPECT_EQ(model().sourceURL(), "/clips/a.mov");
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(model().trimEnd(), 0);
    EXPECT_EQ(m_services.thumbnails.size(), 0U);
}

TEST_F(LoadingASource, RemovesTheOldPlayerWhenItFails)
{
    load(20);
    choose("/clips/b.mov");
    m_services.inspections.back().task().fail(std::runtime_error("no"));
    EXPECT_EQ(model().phase(), Phase::failed("no"));
    EXPECT_EQ(model().player(), nullptr);
    model().endTimelineInteraction(true);
    EXPECT_FALSE(model().previewPlaying());
}

} // namespace stackreel
