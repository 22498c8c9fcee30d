#include "player/playout/TimeObservers.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using std::chrono::milliseconds;

class TimeObserversTest : public testing::Test
{
protected:
    TimeObserversTest()
    {
        observers.add(MediaTime::fromSeconds(0.05), [](MediaTime) {});
    }

    static Clock::Instant at(int after)
    {
        return Clock::Instant() + std::chrono::hours(1) + milliseconds(after);
    }
    void jump(int after) { observers.reportJump(MediaTime(), 0, at(after)); }
    void progress(int after) { observers.reportProgress(MediaTime(), 0, at(after)); }

    TimeObservers observers;
};

} // namespace

TEST_F(TimeObserversTest, AreCalledOneIntervalAfterTheLastOfManyJumps)
{
    progress(0);
    EXPECT_EQ(observers.nextCall(), at(50));
    for (int after = 0; after <= 10'000; after += 33) {
        jump(after);
        ASSERT_EQ(observers.nextCall(), at(after + 50));
    }
}

TEST_F(TimeObserversTest, KeepTheirRhythmWhenATurnIsLate)
{
    progress(0);
    progress(60);
    EXPECT_EQ(observers.nextCall(), at(100));
    progress(230);
    EXPECT_EQ(observers.nextCall(), at(280)) << "more than a whole interval was missed";
}

TEST_F(TimeObserversTest, AreNotCalledBeforeTheirTurn)
{
    progress(0);
    progress(49);
    EXPECT_EQ(observers.nextCall(), at(50));
}

} // namespace stackreel
