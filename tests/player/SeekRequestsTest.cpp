#include "player/engine/SeekRequests.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using std::chrono::milliseconds;

class SeekRequestsTest : public testing::Test
{
protected:
    static constexpr std::uint64_t none = 0;

    /// Requests the seek with this number, `after` milliseconds from the start.
    void request(std::uint64_t number, int after)
    {
        requests.request({.time = static_cast<Nanoseconds>(number) * second, .number = number}, at(after));
    }
    /// The number of the seek that begins `after` milliseconds from the start, or none.
    std::uint64_t begun(int after)
    {
        const auto seek = requests.begin(at(after));
        if (!seek)
            return none;
        EXPECT_EQ(seek->time, static_cast<Nanoseconds>(seek->number) * second);
        return seek->number;
    }
    static Clock::Instant at(int after) { return Clock::Instant() + milliseconds(after); }

    SeekRequests requests;
};

} // namespace

TEST_F(SeekRequestsTest, BeginAtOnceWhenNoneIsInProgress)
{
    EXPECT_TRUE(requests.isIdle());
    EXPECT_EQ(begun(0), none);
    request(1, 0);
    EXPECT_TRUE(requests.isPending());
    EXPECT_EQ(begun(0), 1U);
    EXPECT_FALSE(requests.isPending());
    EXPECT_TRUE(requests.isInFlight());
    EXPECT_EQ(requests.complete(), 1U);
    EXPECT_TRUE(requests.isIdle());
    EXPECT_EQ(begun(1000), none) << "a seek is made once";
}

TEST_F(SeekRequestsTest, KeepOnlyTheLatestAndAlwaysCarryItOut)
{
    request(1, 0);
    EXPECT_EQ(begun(0), 1U);
    request(2, 10);
    request(3, 20);
    request(4, 30);
    EXPECT_EQ(begun(30), none);
    EXPECT_EQ(requests.complete(), 1U);
    EXPECT_EQ(begun(31), 4U);
    EXPECT_EQ(requests.complete(), 4U);
    EXPECT_TRUE(requests.isIdle());
}

TEST_F(SeekRequestsTest, FinishTheCurrentOneWhileNewOnesKeepArriving)
{
    request(1, 0);
    EXPECT_EQ(begun(0), 1U);
    int now = 0;
    for (std::uint64_t number = 2; number < 20; ++number) {
        now += 50;
        request(number, now);
        EXPECT_EQ(begun(now + 49), none) << number;
        EXPECT_EQ(requests.deadline(), at(now + 60));
    }
    EXPECT_EQ(requests.complete(), 1U);
}

TEST_F(SeekRequestsTest, ReplaceTheCurrentOneWhenTheUserStops)
{
    request(1, 0);
    EXPECT_EQ(begun(0), 1U);
    EXPECT_EQ(requests.deadline(), std::nullopt) << "nothing waits";
    request(2, 100);
    EXPECT_EQ(requests.deadline(), at(160));
    EXPECT_EQ(begun(159), none);
    EXPECT_EQ(begun(160), 2U);
    EXPECT_EQ(requests.complete(), 2U);
}

TEST_F(SeekRequestsTest, AreDueAtOnceWhenNoneIsInProgress)
{
    request(1, 10);
    EXPECT_EQ(requests.deadline(), at(10));
    EXPECT_EQ(begun(10), 1U);
    request(2, 20);
    EXPECT_EQ(requests.complete(), 1U);
    EXPECT_EQ(requests.deadline(), at(20)) << "the one before has just shown its frame";
    EXPECT_EQ(begun(20), 2U);
}

TEST_F(SeekRequestsTest, FinishTheReplacementOfAnotherOne)
{
    request(1, 0);
    EXPECT_EQ(begun(0), 1U);
    request(2, 0);
    EXPECT_EQ(begun(60), 2U);
    request(3, 100);
    EXPECT_EQ(requests.deadline(), std::nullopt) << "a slow file would never show anything";
    EXPECT_EQ(begun(10000), none);
    EXPECT_EQ(requests.complete(), 2U);
    EXPECT_EQ(begun(10000), 3U);
    request(4, 10000);
    EXPECT_EQ(begun(10060), 4U) << "the previous one had shown its frame";
}

TEST_F(SeekRequestsTest, CanBeAbandonedOrCleared)
{
    request(1, 0);
    EXPECT_EQ(begun(0), 1U);
    request(2, 1);
    requests.dropInFlight();
    EXPECT_FALSE(requests.isInFlight());
    EXPECT_EQ(begun(1), 2U);
    request(3, 2);
    requests.clear();
    EXPECT_TRUE(requests.isIdle());
    EXPECT_EQ(begun(1000), none);
}

} // namespace stackreel
