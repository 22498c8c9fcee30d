#include "tests/model/ModelTest.h"

#include <limits>

namespace stackreel
{

namespace
{

class PreviewPlaybackTest : public ModelTest
{
protected:
    /// Puts trim range and playhead where a test wants them, and forgets that.
    void place(double trimStart, double trimEnd, double currentTime)
    {
        model().setTrimStart(trimStart);
        model().setTrimEnd(trimEnd);
        model().setCurrentTime(currentTime);
        happened();
    }
    void pause()
    {
        model().togglePreviewPlayback();
        ASSERT_FALSE(model().previewPlaying());
        happened();
    }
    /// The journal of a loop that is built anew and does not play.
    static Lines rebuilt(int looper, const std::string& range, const std::string& playhead,
                         const std::string& seek)
    {
        return {"looper " + std::to_string(looper - 1) + ": disable",
                "player 1: remove all items",
                "make looper " + std::to_string(looper) + " on player 1 for /clips/Beach day.MOV " + range,
                "currentTime " + playhead,
                "player 1: seek to " + seek,
                "previewPlaying false"};
    }
};

using TogglingPlayback = PreviewPlaybackTest;
using SeekingThePreview = PreviewPlaybackTest;
using MovingTheTrimStart = PreviewPlaybackTest;
using MovingTheTrimEnd = PreviewPlaybackTest;
using ATimelineInteraction = PreviewPlaybackTest;
using RebuildingTheLoop = PreviewPlaybackTest;
using FollowingThePlayer = PreviewPlaybackTest;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST_F(TogglingPlayback, PausesWhatPlays)
{
    load(20);
    model().togglePreviewPlayback();
    EXPECT_EQ(happened(), (Lines{"player 1: pause", "previewPlaying false"}));
}

TEST_F(TogglingPlayback, StartsOverCloseToTheEnd)
{
    load(20);
    pause();
    struct Row {
        double currentTime;
        bool startsOver;
    };
    const Row rows[] = {{9.96, true}, {10, true}, {9.95, true}, {9.94, false}, {6, false}};
    for (const Row& row : rows) {
        place(6, 10, row.currentTime);
        model().togglePreviewPlayback();
        const Lines plays = {"player 1: play", "previewPlaying true"};
        const Lines startsOver = {"player 1: seek to 3600/600", "player 1: play", "previewPlaying true"};
        EXPECT_EQ(happened(), row.startsOver ? startsOver : plays) << row.currentTime;
        EXPECT_EQ(model().currentTime(), row.currentTime) << "the playhead follows the player";
        pause();
    }
}

TEST_F(TogglingPlayback, NeverSeeksBeforeTheFile)
{
    load(20);
    pause();
    place(-2, 10, 10);
    model().togglePreviewPlayback();
    EXPECT_EQ(happened().at(0), "player 1: seek to 0/600");
}

TEST_F(TogglingPlayback, WorksWithoutAPlayer)
{
    model().togglePreviewPlayback();
    EXPECT_EQ(happened(), Lines{"previewPlaying true"});
    model().togglePreviewPlayback();
    EXPECT_EQ(happened(), Lines{"previewPlaying false"});
}

TEST_F(SeekingThePreview, StaysWithinTheTrimRange)
{
    load(20);
    struct Row {
        double asked;
        double currentTime;
        const char* seek;
    };
    const Row rows[] = {{5, 6, "3600/600"},
                        {9, 8, "4800/600"},
                        {7.25, 7.25, "4350/600"},
                        {6, 6, "3600/600"},
                        {8, 8, "4800/600"},
                        {-std::numeric_limits<double>::infinity(), 6, "3600/600"},
                        {std::numeric_limits<double>::infinity(), 8, "4800/600"}};
    for (const Row& row : rows) {
        place(6, 8, 7);
        model().seekPreview(row.asked);
        EXPECT_EQ(happened(), (Lines{"currentTime " + described(row.currentTime),
                                     std::string("player 1: seek to ") + row.seek}))
            << row.asked;
    }
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(SeekingThePreview, GoesToTheEndOfARangeThatEndsBeforeItStarts)
{
    load(20);
    for (const double asked : {0.0, 7.0, 20.0}) {
        place(8, 6, 7);
        model().seekPreview(asked);
        EXPECT_EQ(happened(), (Lines{"currentTime 6", "player 1: seek to 3600/600"})) << asked;
    }
}

TEST_F(SeekingThePreview, MovesThePlayheadWithoutAPlayer)
{
    place(6, 8, 7);
    model().seekPreview(5);
    EXPECT_EQ(happened(), Lines{"currentTime 6"});
}

TEST_F(SeekingThePreview, NeverSeeksBeforeTheFile)
{
    load(20);
    place(-2, 8, 7);
    model().seekPreview(-1);
    EXPECT_EQ(happened(), (Lines{"currentTime -1", "player 1: seek to 0/600"}));
}

TEST_F(MovingTheTrimStart, KeepsTheLeastLengthBeforeTheEnd)
{
    struct Row {
        double duration;
        double trimEnd;
        double asked;
        double trimStart;
        const char* seek;
    };
    const Row rows[] = {
        {20, 10, -3, 0, "0/600"},        {20, 10, 9, 9, "5400/600"},       {20, 10, 9.75, 9.75, "5850/600"},
        {20, 10, 9.8, 9.75, "5850/600"}, {20, 10, 100, 9.75, "5850/600"},  {20, 0.1, 5, 0, "0/600"},
        {0.2, 0.2, 0.15, 0.1, "60/600"}, {0.2, 0.2, 0.05, 0.05, "30/600"}, {0.06, 0.06, 1, 0.01, "6/600"},
        {0.5, 0.5, 1, 0.25, "150/600"},  {0, 20, 30, 19.95, "11970/600"},
    };
    for (const Row& row : rows) {
        load(row.duration);
        place(0, row.trimEnd, 0);
        model().updateTrimStart(row.asked);
        EXPECT_NEAR(model().trimStart(), row.trimStart, 1e-12) << row.asked;
        EXPECT_EQ(model().currentTime(), model().trimStart());
        EXPECT_EQ(model().trimEnd(), row.trimEnd);
        const std::string start = described(model().trimStart());
        EXPECT_EQ(happened(), (Lines{"trimStart " + start, "currentTime " + start,
                                     player().name() + ": seek to " + row.seek}));
    }
}

TEST_F(MovingTheTrimStart, WorksWithoutASource)
{
    place(0, 10, 0);
    model().updateTrimStart(9.99);
    EXPECT_EQ(happened(), (Lines{"trimStart 9.95", "currentTime 9.95"}));
}

TEST_F(MovingTheTrimEnd, KeepsTheLeastLengthAfterTheStartAndStaysInTheClip)
{
    struct Row {
        double duration;
        double trimStart;
        double asked;
        double trimEnd;
        double currentTime;
        const char* seek;
    };
    const Row rows[] = {
        {20, 0, 100, 20, 20 - 1.0 / 30, "11980/600"},
        {20, 0, 10, 10, 10 - 1.0 / 30, "5980/600"},
        {20, 9, 9.1, 9.25, 9.25 - 1.0 / 30, "5530/600"},
        {20, 9, -5, 9.25, 9.25 - 1.0 / 30, "5530/600"},
        // The least length may reach past the end of the clip.
        {20, 19.9, 20, 20.15, 20.15 - 1.0 / 30, "12070/600"},
        {0.2, 0, 0.01, 0.1, 0.1 - 1.0 / 30, "40/600"},
        {0.05, 0, 0.01, 0.05, 0.05 - 1.0 / 30, "10/600"},
        {20, -1, -2, -0.75, -0.75 - 1.0 / 30, "0/600"},
    };
    for (const Row& row : rows) {
        load(row.duration);
        place(row.trimStart, row.duration, row.trimStart);
        model().updateTrimEnd(row.asked);
        EXPECT_NEAR(model().trimEnd(), row.trimEnd, 1e-12) << row.asked;
        EXPECT_NEAR(model().currentTime(), row.currentTime, 1e-12) << row.asked;
        EXPECT_EQ(model().trimStart(), row.trimStart);
        EXPECT_EQ(happened(), (Lines{"trimEnd " + described(model().trimEnd()),
                                     "currentTime " + described(model().currentTime()),
                                     player().name() + ": seek to " + row.seek}));
    }
}

TEST_F(MovingTheTrimEnd, PutsThePlayheadAFrameBeforeTheEndOfTheShortestRange)
{
    load(20);
    model().setMediaInfo(clip(0.05));
    place(0, 20, 0);
    model().setTrimStart(3);
    happened();
    model().updateTrimEnd(2);
    EXPECT_NEAR(model().trimEnd(), 3.05, 1e-12);
    EXPECT_NEAR(model().currentTime(), 3.05 - 1.0 / 30, 1e-12);
}

TEST_F(MovingTheTrimEnd, DoesNothingWithoutASource)
{
    place(0, 10, 4);
    model().updateTrimEnd(5);
    EXPECT_EQ(happened(), Lines());
    EXPECT_EQ(model().trimEnd(), 10);
}

TEST_F(ATimelineInteraction, InterruptsPlaybackAndResumesIt)
{
    load(20);
    model().beginTimelineInteraction();
    EXPECT_EQ(happened(), (Lines{"player 1: pause", "previewPlaying false"}));
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), (Lines{"player 1: play", "previewPlaying true"}));
}

TEST_F(ATimelineInteraction, LeavesAPausedPreviewPaused)
{
    load(20);
    pause();
    model().beginTimelineInteraction();
    EXPECT_EQ(happened(), (Lines{"player 1: pause", "previewPlaying false"}));
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), Lines());
}

TEST_F(ATimelineInteraction, BegunTwiceForgetsThatThePreviewPlayed)
{
    load(20);
    model().beginTimelineInteraction();
    model().beginTimelineInteraction();
    happened();
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), Lines());
    EXPECT_FALSE(model().previewPlaying());
}

TEST_F(ATimelineInteraction, EndedTwiceResumesOnce)
{
    load(20);
    model().beginTimelineInteraction();
    model().endTimelineInteraction(false);
    pause();
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), Lines());
}

TEST_F(ATimelineInteraction, WorksWithoutAPlayer)
{
    model().togglePreviewPlayback();
    happened();
    model().beginTimelineInteraction();
    EXPECT_EQ(happened(), Lines{"previewPlaying false"});
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), Lines{"previewPlaying true"});
    model().beginTimelineInteraction();
    happened();
    model().endTimelineInteraction(true);
    EXPECT_EQ(happened(), Lines()) << "there is no loop to rebuild";
    EXPECT_FALSE(model().previewPlaying());
}

TEST_F(ATimelineInteraction, ThatMovedAHandleLoopsTheNewRangeFromThePlayhead)
{
    load(20);
    model().beginTimelineInteraction();
    model().updateTrimStart(6);
    model().updateTrimEnd(8);
    happened();
    model().endTimelineInteraction(true);
    Lines expected = rebuilt(2, "from 3600/600 for 1200/600", described(8 - 1.0 / 30), "4780/600");
    expected.back() = "player 1: play";
    expected.push_back("previewPlaying true");
    EXPECT_EQ(happened(), expected);
}

TEST_F(ATimelineInteraction, OfOneStepLoopsFromTheTrimStart)
{
    load(20);
    pause();
    model().beginTimelineInteraction();
    model().updateTrimEnd(8);
    happened();
    model().endTimelineStep();
    EXPECT_EQ(happened(), rebuilt(2, "from 0/600 for 4800/600", "0", "0/600"));

    model().togglePreviewPlayback();
    model().beginTimelineInteraction();
    model().updateTrimStart(6);
    happened();
    model().endTimelineStep();
    EXPECT_TRUE(model().previewPlaying());
    EXPECT_EQ(model().currentTime(), 6);
    happened();
    model().endTimelineInteraction(false);
    EXPECT_EQ(happened(), Lines()) << "what was interrupted has been resumed already";
}

TEST_F(RebuildingTheLoop, PlacesThePlayheadInsideTheRange)
{
    load(20);
    pause();
    struct Row {
        double trimStart;
        double trimEnd;
        double currentTime;
        const char* range;
        double playhead;
        const char* seek;
    };
    const Row rows[] = {
        {6, 8, 7, "from 3600/600 for 1200/600", 7, "4200/600"},
        {6, 8, 5, "from 3600/600 for 1200/600", 6, "3600/600"},
        // One unit before the end, so that the loop does not wrap at once.
        {6, 8, 8, "from 3600/600 for 1200/600", 8 - 1.0 / 600, "4799/600"},
        {6, 8, 9, "from 3600/600 for 1200/600", 8 - 1.0 / 600, "4799/600"},
        {6, 6, 6, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6, 9, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6.001, 6.001, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6.1, 6.05, "from 3600/600 for 150/600", 6.05, "3630/600"},
        {6, 5, 9, "from 3600/600 for 150/600", 6, "3600/600"},
        {-1, 2, -0.5, "from -600/600 for 1800/600", -0.5, "0/600"},
    };
    int looper = 1;
    for (const Row& row : rows) {
        place(row.trimStart, row.trimEnd, row.currentTime);
        model().endTimelineInteraction(true);
        EXPECT_NEAR(model().currentTime(), row.playhead, 1e-12);
        EXPECT_EQ(happened(), rebuilt(++looper, row.range, described(model().currentTime()), row.seek));
    }
}

TEST_F(RebuildingTheLoop, KeepsTheLeastLengthOfAShortClip)
{
    load(0.2);
    pause();
    place(0.1, 0.1, 0.1);
    model().endTimelineInteraction(true);
    EXPECT_EQ(happened(), rebuilt(2, "from 60/600 for 60/600", "0.1", "60/600"));
}

TEST_F(RebuildingTheLoop, DoesNothingBeforeThereIsAFileToPlay)
{
    model().setPlayer(m_world.playback->makePlayer());
    model().setPreviewPlaying(true);
    happened();
    model().endTimelineInteraction(true);
    EXPECT_EQ(happened(), Lines());
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(FollowingThePlayer, TicksAreTakenOverFromATaskOfTheirOwn)
{
    load(20);
    player().tick(MediaTime::fromUnits(150));
    EXPECT_EQ(happened(), Lines()) << "within the tick";
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines{"currentTime 0.25"});
}

TEST_F(FollowingThePlayer, TicksStayWithinTheTrimRange)
{
    load(20);
    struct Row {
        MediaTime time;
        double currentTime;
    };
    const Row rows[] = {
        {MediaTime::fromUnits(4200), 7}, {MediaTime::fromUnits(0), 6},
        {MediaTime::fromUnits(3599), 6}, {MediaTime::fromUnits(3600), 6},
        {MediaTime::fromUnits(4800), 8}, {MediaTime::fromUnits(4801), 8},
        {MediaTime::fromUnits(-1), 6},   {MediaTime::fromUnits(std::numeric_limits<std::int64_t>::max()), 8}};
    for (const Row& row : rows) {
        place(6, 8, 6.5);
        player().tick(row.time);
        runQueuedTasks();
        EXPECT_EQ(happened(), Lines{"currentTime " + described(row.currentTime)});
    }
}

TEST_F(FollowingThePlayer, TicksGoToTheEndOfARangeThatEndsBeforeItStarts)
{
    load(20);
    for (const std::int64_t units : {0, 4200, 12000}) {
        place(8, 6, 7);
        player().tick(MediaTime::fromUnits(units));
        runQueuedTasks();
        EXPECT_EQ(happened(), Lines{"currentTime 6"}) << units;
    }
}

TEST_F(FollowingThePlayer, TicksWithoutATimeAreDropped)
{
    load(20);
    place(6, 8, 7);
    const double times[] = {nan, std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), 1e300};
    for (const double time : times)
        player().tick(MediaTime::fromSeconds(time));
    player().tick(MediaTime::indefinite());
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines());
}

TEST_F(FollowingThePlayer, TicksInterleaveWithTheUserInOrder)
{
    load(20);
    player().tick(MediaTime::fromUnits(600));
    model().seekPreview(5);
    player().tick(MediaTime::fromUnits(3000));
    runQueuedTasks();
    EXPECT_EQ(happened(),
              (Lines{"currentTime 5", "player 1: seek to 3000/600", "currentTime 1", "currentTime 5"}));
}

TEST_F(FollowingThePlayer, TicksAfterTheModelIsGoneDoNothing)
{
    load(20);
    player().tick(MediaTime::fromUnits(600));
    destroyModel();
    player().tick(MediaTime::fromUnits(1200));
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines());
}

TEST_F(FollowingThePlayer, APlayerThatWasReplacedIsNotHeardAnyMore)
{
    load(20);
    load(30);
    m_world.playback->player(1).tick(MediaTime::fromUnits(600));
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines());
    m_world.playback->player(2).tick(MediaTime::fromUnits(600));
    runQueuedTasks();
    EXPECT_EQ(happened(), Lines{"currentTime 1"});
}

} // namespace stackreel
