#include "cli/Progress.h"

#include "cli/ProgressDisplay.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

EncoderStatus at(double seconds, std::optional<double> speed = std::nullopt)
{
    return {.seconds = seconds, .frames = std::nullopt, .speed = speed};
}

TEST(ProgressEstimate, DividesByTheLengthOfTheExport)
{
    ProgressEstimate estimate(8);
    EXPECT_EQ(estimate.current(), Progress());
    EXPECT_EQ(estimate.update(at(2, 0.5)), (Progress{.percent = 25, .speed = 0.5, .secondsLeft = 12}));
}

TEST(ProgressEstimate, NeverDecreasesNorExceedsOneHundredPercent)
{
    ProgressEstimate estimate(10);
    EXPECT_EQ(estimate.update(at(5)).percent, 50);
    EXPECT_EQ(estimate.update(at(4)).percent, 50);
    EXPECT_EQ(estimate.update(at(9.999)).percent, 99);
    EXPECT_EQ(estimate.update(at(10.02, 2)),
              (Progress{.percent = 100, .speed = 2, .secondsLeft = std::nullopt}));
    EXPECT_EQ(estimate.update(at(1e300)).percent, 100);
    EXPECT_EQ(estimate.update(at(0)).percent, 100);
}

TEST(ProgressEstimate, StaysAtZeroForALengthOfZero)
{
    ProgressEstimate estimate(0);
    EXPECT_EQ(estimate.update(at(1, 1)).percent, 0);
}

TEST(Progress, LineShowsTheKnownValues)
{
    EXPECT_EQ(Progress().line(), "0 %");
    EXPECT_EQ((Progress{.percent = 42, .speed = 1.306, .secondsLeft = 11.2}.line()),
              "42 %, 1.31x, 0:12 left");
    EXPECT_EQ((Progress{.percent = 99, .speed = 119.6, .secondsLeft = 0.01}.line()), "99 %, 120x, 0:01 left");
    EXPECT_EQ((Progress{.percent = 1, .speed = 0.01, .secondsLeft = 7322}.line()), "1 %, 0.01x, 122:02 left");
    EXPECT_EQ((Progress{.percent = 1, .speed = 1e300, .secondsLeft = 1e300}.line()), "1 %");
}

TEST(Progress, BarFillsTheGivenColumns)
{
    const Progress half = {.percent = 50, .speed = 1.5, .secondsLeft = 62};
    EXPECT_EQ(half.bar(50), " 50 % [##########----------]  1.50x  1:02 left    ");
    for (const int percent : {0, 7, 50, 100})
        for (const std::size_t columns : {40U, 57U, 78U, 200U})
            EXPECT_EQ(
                (Progress{.percent = percent, .speed = 9.99, .secondsLeft = 359'000}.bar(columns).size()),
                columns);
}

TEST(Progress, CutsTheLineWithoutRoomForABar)
{
    const Progress half = {.percent = 50, .speed = 1.5, .secondsLeft = 62};
    EXPECT_EQ(half.bar(30), "50 %, 1.50x, 1:02 left");
    EXPECT_EQ(half.bar(4), "50 %");
    EXPECT_EQ(half.bar(0), "");
}

TEST(ProgressSchedule, IsDueForPeopleAfterTenPercentOrFiveSeconds)
{
    const ProgressSchedule::Time start{};
    auto schedule = ProgressSchedule::plainLines(start);
    EXPECT_FALSE(schedule.isDue(0, start + 1h));
    EXPECT_FALSE(schedule.isDue(9, start + 1s));
    EXPECT_TRUE(schedule.isDue(10, start + 2s));
    EXPECT_FALSE(schedule.isDue(10, start + 1h));
    EXPECT_FALSE(schedule.isDue(11, start + 6s));
    EXPECT_TRUE(schedule.isDue(11, start + 7s));
    EXPECT_TRUE(schedule.isDue(100, start + 7s));
}

TEST(ProgressSchedule, IsDueForProgramsAfterOnePercentOrFiveSeconds)
{
    const ProgressSchedule::Time start{};
    auto schedule = ProgressSchedule::reports(start);
    EXPECT_FALSE(schedule.isDue(0, start + 4s));
    EXPECT_TRUE(schedule.isDue(0, start + 5s));
    EXPECT_FALSE(schedule.isDue(0, start + 9s));
    EXPECT_TRUE(schedule.isDue(1, start + 9s));
    EXPECT_FALSE(schedule.isDue(1, start + 9s));
}

} // namespace

} // namespace stackreel
