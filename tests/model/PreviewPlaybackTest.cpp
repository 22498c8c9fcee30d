#include "tests/model/PreviewPlaybackTest.h"

#include <algorithm>
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

TEST_F(TogglingPlayback, PausesAPlayingPreview)
{
    load(20);
    model().togglePreviewPlayback();
    EXPECT_EQ(takeJournal(), (Lines{"player 1: pause", "previewPlaying false"}));
}

TEST_F(TogglingPlayback, RestartsTheRangeCloseToItsEnd)
{
    load(20);
    pause();
    struct Row {
        double currentTime;
        bool restarts;
    };
    const Row rows[] = {{9.96, true}, {10, true}, {9.95, true}, {9.94, false}, {6, false}};
    for (const Row& row : rows) {
        setTimes(6, 10, row.currentTime);
        model().togglePreviewPlayback();
        const Lines plays = {"player 1: play", "previewPlaying true"};
        const Lines restarts = {"player 1: seek to 3600/600", "player 1: play", "previewPlaying true"};
        EXPECT_EQ(takeJournal(), row.restarts ? restarts : plays) << row.currentTime;
        EXPECT_EQ(model().currentTime(), row.currentTime) << "the playhead follows the player";
        pause();
    }
}

TEST_F(TogglingPlayback, NeverSeeksToANegativeTime)
{
    load(20);
    pause();
    setTimes(-2, 10, 10);
    model().togglePreviewPlayback();
    EXPECT_EQ(takeJournal().at(0), "player 1: seek to 0/600");
}

TEST_F(TogglingPlayback, WorksWithoutAPlayer)
{
    model().togglePreviewPlayback();
    EXPECT_EQ(takeJournal(), Lines{"previewPlaying true"});
    model().togglePreviewPlayback();
    EXPECT_EQ(takeJournal(), Lines{"previewPlaying false"});
}

TEST_F(SeekingThePreview, StaysWithinTheTrimRange)
{
    load(20);
    struct Row {
        double requested;
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
        setTimes(6, 8, 7);
        model().seekPreview(row.requested);
        EXPECT_EQ(takeJournal(), (Lines{"currentTime " + described(row.currentTime),
                                        std::string("player 1: seek to ") + row.seek}))
            << row.requested;
    }
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(SeekingThePreview, GoesToTheEndOfARangeThatEndsBeforeItStarts)
{
    load(20);
    for (const double requested : {0.0, 7.0, 20.0}) {
        setTimes(8, 6, 7);
        model().seekPreview(requested);
        EXPECT_EQ(takeJournal(), (Lines{"currentTime 6", "player 1: seek to 3600/600"})) << requested;
    }
}

TEST_F(SeekingThePreview, MovesThePlayheadWithoutAPlayer)
{
    setTimes(6, 8, 7);
    model().seekPreview(5);
    EXPECT_EQ(takeJournal(), Lines{"currentTime 6"});
}

TEST_F(SeekingThePreview, NeverSeeksToANegativeTime)
{
    load(20);
    setTimes(-2, 8, 7);
    model().seekPreview(-1);
    EXPECT_EQ(takeJournal(), (Lines{"currentTime -1", "player 1: seek to 0/600"}));
}

TEST_F(FollowingThePlayer, AppliesTicksFromTheEventLoop)
{
    load(20);
    player().tick(MediaTime::fromUnits(150));
    EXPECT_EQ(takeJournal(), Lines()) << "within the tick";
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines{"currentTime 0.25"});
}

TEST_F(FollowingThePlayer, ClampsTicksToTheTrimRange)
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
        setTimes(6, 8, 6.5);
        player().tick(row.time);
        runQueuedTasks();
        EXPECT_EQ(takeJournal(), Lines{"currentTime " + described(row.currentTime)});
    }
}

TEST_F(FollowingThePlayer, ClampsTicksToTheEndOfARangeThatEndsBeforeItStarts)
{
    load(20);
    for (const std::int64_t units : {0, 4200, 12000}) {
        setTimes(8, 6, 7);
        player().tick(MediaTime::fromUnits(units));
        runQueuedTasks();
        EXPECT_EQ(takeJournal(), Lines{"currentTime 6"}) << units;
    }
}

TEST_F(FollowingThePlayer, DropsTicksWithoutAFiniteTime)
{
    load(20);
    setTimes(6, 8, 7);
    const double times[] = {nan, std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), 1e300};
    for (const double time : times)
        player().tick(MediaTime::fromSeconds(time));
    player().tick(MediaTime::indefinite());
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(FollowingThePlayer, KeepsTheOrderOfTicksAndUserActions)
{
    load(20);
    player().tick(MediaTime::fromUnits(600));
    model().seekPreview(5);
    player().tick(MediaTime::fromUnits(3000));
    runQueuedTasks();
    EXPECT_EQ(takeJournal(),
              (Lines{"currentTime 5", "player 1: seek to 3000/600", "currentTime 1", "currentTime 5"}));
}

TEST_F(FollowingThePlayer, IgnoresTicksAfterTheModelIsDestroyed)
{
    load(20);
    player().tick(MediaTime::fromUnits(600));
    destroyModel();
    player().tick(MediaTime::fromUnits(1200));
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(FollowingThePlayer, IgnoresATickThatIsQueuedWhenThePlayerIsReplaced)
{
    load(20);
    model().chooseSource();
    m_services.openPanel->choose("/clips/b.mov");
    player().tick(MediaTime::fromUnits(600));
    runQueuedTasks();
    const Lines lines = takeJournal();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "currentTime 0"), 1) << "that of the load itself";
}

TEST_F(FollowingThePlayer, IgnoresTicksOfAReplacedPlayer)
{
    load(20);
    load(30);
    m_services.players->at(1).tick(MediaTime::fromUnits(600));
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
    m_services.players->at(2).tick(MediaTime::fromUnits(600));
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines{"currentTime 1"});
}

} // namespace stackreel
