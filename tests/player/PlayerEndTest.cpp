#include "tests/player/PlayerTest.h"
#include "tests/player/Repetition.h"
#include "tests/support/Awaited.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace stackreel
{

namespace
{

using PlayerAtTheEnd = PlayerTest;

} // namespace

TEST_F(PlayerAtTheEnd, PlaysToTheEndAfterLoopingIsDisabled)
{
    loop(longInterval.file(), 7, 7.2);
    player->play();
    ASSERT_TRUE(output->waitForCount(20));
    looper->disableLooping();
    double last = 0;
    player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
    EXPECT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
    EXPECT_EQ(output->current(), 215);
    EXPECT_TRUE(repeats(output->numbers(), 210, 215));
}

TEST_F(PlayerAtTheEnd, PerformsItsActionAtItemEnd)
{
    using Action = QueuePlayer::ActionAtItemEnd;
    for (Action action : {Action::none, Action::pause, Action::advance}) {
        player->setActionAtItemEnd(action);
        loop(longInterval.file(), 7, 7.2);
        player->play();
        ASSERT_TRUE(output->waitForNumber(213));
        double last = 0;
        const auto token =
            player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
        looper->disableLooping();
        if (action == Action::advance) {
            EXPECT_TRUE(output->waitForNumber(-1));
            continue;
        }
        ASSERT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
        EXPECT_EQ(output->current(), 215);
        output->forget();
        seek(7.1);
        ASSERT_TRUE(output->waitForNumber(213));
        if (action == Action::none) {
            EXPECT_TRUE(output->waitForNumber(215)) << "playback continues after a seek back";
        }
        player->removeTimeObserver(token);
        if (action == Action::pause) {
            // A player that still played would show another frame within this time.
            EXPECT_FALSE(
                eventually([this] { return output->current() != 213; }, std::chrono::milliseconds(300)));
            player->play();
            EXPECT_TRUE(output->waitForNumber(215));
        }
    }
}

/// The last frame is shown for 33 ms. The new loop starts at different moments around the end of the one
/// before.
TEST_F(PlayerAtTheEnd, PlaysALoopThatIsStartedWhileTheOneBeforeEnds)
{
    player->setActionAtItemEnd(QueuePlayer::ActionAtItemEnd::pause);
    for (int delay = 20; delay < 40; ++delay) {
        loop(longInterval.file(), 7.1, 7.2);
        player->play();
        ASSERT_TRUE(output->waitForNumber(214)) << delay;
        looper->disableLooping();
        ASSERT_TRUE(output->waitForNumber(215)) << delay;
        std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    }
}

TEST_F(PlayerAtTheEnd, ShowsTheLastFrameInANewSizeAfterTheEnd)
{
    for (auto action : {QueuePlayer::ActionAtItemEnd::none, QueuePlayer::ActionAtItemEnd::pause}) {
        player->setActionAtItemEnd(action);
        player->setVideoSize(320, 180);
        loop(longInterval.file(), 7, 7.2);
        player->play();
        ASSERT_TRUE(output->waitForNumber(213));
        double last = 0;
        const auto token =
            player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
        looper->disableLooping();
        ASSERT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
        output->forget();
        player->setVideoSize(160, 90);
        ASSERT_TRUE(output->waitForCount(1));
        EXPECT_EQ(output->shown().back().width, 160);
        // A player that wrapped would show another frame within this time.
        EXPECT_FALSE(eventually([this] { return output->current() != 215; }, std::chrono::milliseconds(300)));
        player->removeTimeObserver(token);
    }
}

} // namespace stackreel
