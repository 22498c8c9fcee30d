#include "media/WorkerThread.h"

#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <atomic>
#include <latch>
#include <string>
#include <system_error>

namespace stackreel
{

TEST(AWorkerThread, ReturnsTheResultOnTheAwaitingThread)
{
    const auto self = std::this_thread::get_id();
    std::thread::id workedOn;
    EXPECT_EQ(runToEnd(onWorkerThread([&workedOn] {
                  workedOn = std::this_thread::get_id();
                  return std::string("result");
              })),
              "result");
    EXPECT_NE(workedOn, self);
    EXPECT_NE(workedOn, std::thread::id());
}

TEST(AWorkerThread, RethrowsTheExceptionOfTheWork)
{
    const auto fail = []() -> int { throw std::runtime_error("from the worker"); };
    try {
        runToEnd(onWorkerThread(fail));
        FAIL() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "from the worker");
    }
}

TEST(AWorkerThread, MovesItsResult)
{
    const auto make = [] { return std::make_unique<int>(42); };
    const auto take = [make]() -> QCoro::Task<int> {
        const auto number = co_await onWorkerThread(make);
        co_return *number;
    };
    EXPECT_EQ(runToEnd(take()), 42);
}

TEST(AWorkerThread, DoesNotBlockTheAwaitingThread)
{
    std::latch release(1);
    Awaited<int> working(onWorkerThread([&release] {
        release.wait();
        return 1;
    }));
    EXPECT_FALSE(working.hasEnded());
    release.count_down();
    EXPECT_EQ(working.result(), 1);
}

TEST(AWorkerThread, FinishesItsWorkWhenItsTaskIsDropped)
{
    std::atomic<bool> done = false;
    {
        const auto dropped = onWorkerThread([&done] {
            done = true;
            return 0;
        });
    }
    EXPECT_TRUE(eventually([&done] { return done.load(); }));
    EXPECT_EQ(runToEnd(onWorkerThread([] { return 7; })), 7) << "a later thread works";
}

TEST(AWorkerThread, CanBeAwaitedManyTimes)
{
    const auto chain = []() -> QCoro::Task<int> {
        int total = 0;
        for (int round = 0; round < 200; ++round)
            total += co_await onWorkerThread([round] { return round; });
        co_return total;
    };
    std::vector<Awaited<int>> chains;
    for (int count = 0; count < 5; ++count)
        chains.emplace_back(chain());
    for (auto& running : chains)
        EXPECT_EQ(running.result(), 19'900);
}

TEST(AWorkerThread, ThrowsWhenNoThreadCanStart)
{
    // A stack of this size does not fit into the address space, so creating the thread fails.
    pthread_attr_t before;
    pthread_attr_t huge;
    pthread_getattr_default_np(&before);
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 47);
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    Awaited<int> working(onWorkerThread([] { return 1; }));
    pthread_setattr_default_np(&before);
    pthread_attr_destroy(&huge);
    pthread_attr_destroy(&before);
    EXPECT_TRUE(working.hasEnded());
    EXPECT_THROW(working.result(), std::system_error);
}

} // namespace stackreel
