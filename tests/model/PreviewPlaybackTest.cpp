#include "tests/model/PreviewPlaybackTest.h"

#include <limits>

namespace stackreel
{

namespace
{

using TogglingPlayback = PreviewPlaybackTest;
using SeekingThePreview = PreviewPlaybackTest;
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
