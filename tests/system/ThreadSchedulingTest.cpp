#include "system/ThreadScheduling.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <functional>
#include <thread>

namespace stackreel
{

namespace
{

int niceness()
{
    return getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)));
}

int nicenessAfter(const std::function<void()>& request)
{
    int seen = -1;
    std::thread([&] {
        request();
        seen = niceness();
    }).join();
    return seen;
}

} // namespace

TEST(ThreadScheduling, KeepsPolicyAndPriorityWhenAShortTimeSliceIsRequested)
{
    int policy = -1;
    EXPECT_EQ(nicenessAfter([&] {
                  requestShortTimeSlice();
                  policy = sched_getscheduler(0);
              }),
              niceness());
    EXPECT_EQ(policy, SCHED_OTHER);
}

} // namespace stackreel
