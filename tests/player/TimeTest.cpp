#include "player/base/Clock.h"
#include "player/base/Nanoseconds.h"
#include "player/loop/LoopRange.h"

#include <gtest/gtest.h>

#include <limits>

namespace stackreel
{

TEST(Nanoseconds, AreRoundedFromAMediaTime)
{
    const struct {
        std::int64_t units;
        Nanoseconds time;
    } rows[] = {
        {0, 0},           {1, 1'666'667}, {2, 3'333'333},   {3, 5'000'000},
        {10, 16'666'667}, {600, second},  {-1, -1'666'667}, {std::int64_t{3600} * 600 * 24, 86400 * second},
    };
    for (const auto& row : rows)
        EXPECT_EQ(toNanoseconds(MediaTime::fromUnits(row.units)), row.time) << row.units;
    EXPECT_EQ(toNanoseconds(MediaTime::indefinite()), 0);
    EXPECT_GT(toNanoseconds(MediaTime::fromUnits(std::numeric_limits<std::int64_t>::max())), 86400 * second);
    EXPECT_LT(toNanoseconds(MediaTime::fromUnits(std::numeric_limits<std::int64_t>::min())), 0);
}

TEST(LoopRange, AcceptsHalfAUnitOnBothSides)
{
    const LoopRange range{second, 2 * second};
    EXPECT_TRUE(range.contains(second));
    EXPECT_TRUE(range.contains(second - halfUnit));
    EXPECT_FALSE(range.contains(second - 2 * halfUnit));
    EXPECT_TRUE(range.contains(2 * second - 2 * halfUnit));
    EXPECT_FALSE(range.contains(2 * second - halfUnit));
    EXPECT_FALSE(range.contains(2 * second));
}

TEST(Clock, PausesAndResumesAtItsTime)
{
    const Clock::Instant start = Clock::Instant() + std::chrono::hours(1);
    const auto after = [start](int milliseconds) { return start + std::chrono::milliseconds(milliseconds); };
    Clock clock;
    clock.set(5 * second, start);
    EXPECT_EQ(clock.at(after(100)), 5 * second);
    clock.setRunning(true, after(200));
    EXPECT_EQ(clock.at(after(200)), 5 * second);
    EXPECT_EQ(clock.at(after(300)), 5 * second + 100 * millisecond);
    EXPECT_EQ(clock.when(6 * second), after(1200));
    clock.setRunning(true, after(400));
    EXPECT_EQ(clock.when(6 * second), after(1200));
    clock.setRunning(false, after(500));
    EXPECT_EQ(clock.at(after(900)), 5 * second + 300 * millisecond);
    clock.set(0, after(900));
    clock.setRunning(true, after(1000));
    EXPECT_EQ(clock.when(second), after(2000));
}

} // namespace stackreel
