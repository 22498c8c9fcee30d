#include "player/base/ForegroundWork.h"
#include "tests/player/PlayerTest.h"
#include "tests/support/Awaited.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <thread>
#include <vector>

namespace stackreel
{

namespace
{

using SeekingPlayer = PlayerTest;

} // namespace

TEST_F(SeekingPlayer, ShowsTheFrameOfAnExactSeekWhilePaused)
{
    loop(longInterval.file(), 0, 10);
    for (double time : {0.0, 5.0, 4.99, 9.9, 8.35, 0.016, 10.0}) {
        seek(time);
        EXPECT_TRUE(output->waitForNumber(std::min(299, static_cast<int>(std::floor(time * 30 + 0.02)))))
            << time;
    }
}

TEST_F(SeekingPlayer, ShowsFramesOutsideTheRangeAndPlaysFromItsStart)
{
    loop(longInterval.file(), 2, 2.5);
    for (double time : {1.0, 2.5, 7.0}) {
        seek(time);
        ASSERT_TRUE(output->waitForNumber(static_cast<int>(time * 30))) << time;
        player->play();
        ASSERT_TRUE(output->waitForNumber(60)) << time;
        ASSERT_TRUE(output->waitForNumber(74)) << time;
        player->pause();
    }
}

TEST_F(SeekingPlayer, CarriesOutTheLastOfManySeeks)
{
    loop(longInterval.file(), 0, 10);
    for (int round = 0; round < 5; ++round) {
        for (int number = 0; number < 200; ++number)
            seek((number * 37 % 300) / 30.0);
        const int last = 100 + round * 20;
        seek(last / 30.0);
        ASSERT_TRUE(output->waitForNumber(last)) << last;
    }
    // Far fewer frames were shown than requested, because a new request replaces a pending one.
    EXPECT_LT(output->shown().size(), 500U);
}

TEST_F(SeekingPlayer, PlaysOnAfterSeeksToTheEndInQuickSuccession)
{
    loop(longInterval.file(), 7, 10);
    player->play();
    std::mt19937 random(20);
    std::uniform_int_distribution<int> interval(0, 40);
    for (int round = 0; round < 40; ++round) {
        for (double time : {8.5, 9.0, 9.5, 10.0, 10.0, 10.0}) {
            seek(time);
            // The interval of a repeating key.
            std::this_thread::sleep_for(std::chrono::milliseconds(interval(random)));
        }
        ASSERT_TRUE(output->waitFor([](const auto& shown) {
            return !shown.empty() && shown.back().number > 210 && shown.back().number < 240;
        })) << "does not begin the range again in round "
            << round;
    }
}

TEST_F(SeekingPlayer, ReportsTheTimeOfSeeksAndNoneWhenClosed)
{
    std::vector<MediaTime> times;
    const auto token =
        player->addPeriodicTimeObserver(at(0.05), [&](MediaTime time) { times.push_back(time); });
    loop(longInterval.file(), 2, 3);
    ASSERT_TRUE(eventually([&] { return !times.empty(); }));
    EXPECT_EQ(times.back(), at(2));
    seek(2.51);
    ASSERT_TRUE(eventually([&] { return times.back() == at(2.51); }));
    EXPECT_EQ(times.size(), 2U);
    player->play();
    ASSERT_TRUE(eventually([&] { return times.size() > 30; }));
    for (MediaTime time : times) {
        EXPECT_GE(time.seconds(), 2);
        EXPECT_LE(time.seconds(), 3.001);
    }
    player->close();
    ASSERT_TRUE(eventually([&] { return times.back() == MediaTime::indefinite(); }));
    player->removeTimeObserver(token);
}

TEST_F(SeekingPlayer, DelaysBackgroundWorkUntilARequestedFrameIsShown)
{
    const auto backgroundWaits = [] {
        std::chrono::nanoseconds patience(1);
        waitForForegroundWork({}, patience);
        return patience.count() == 0;
    };
    int waited = 0;
    for (int round = 0; round < 5; ++round) {
        loop(longInterval.file(), 7, 8);
        waited += backgroundWaits();
        EXPECT_TRUE(eventually([&] { return !backgroundWaits(); }));
        EXPECT_TRUE(output->waitForNumber(210));
        player->close();
        EXPECT_FALSE(backgroundWaits());
    }
    // Not in every round: on a busy machine the frame may be shown before this thread continues.
    EXPECT_GT(waited, 0);
}

} // namespace stackreel
