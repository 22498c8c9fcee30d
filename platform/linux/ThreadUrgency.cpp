#include "platform/ThreadUrgency.h"

#include <linux/sched/types.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

namespace stackreel
{

namespace
{

/// How much longer others may compute before a thread that just woke gets its turn, in nanoseconds: the least
/// that Linux takes. From 6.12 on it heeds this for ordinary threads too; until then it let those that had
/// slept go first of its own accord.
constexpr unsigned long long shortestSlice = 100'000;
constexpr int backgroundNiceness = 2;
constexpr int greatestNiceness = 19;

} // namespace

void runPromptly()
{
    sched_attr attributes = {};
    attributes.size = sizeof attributes;
    attributes.sched_nice = getpriority(PRIO_PROCESS, 0);
    attributes.sched_runtime = shortestSlice;
    syscall(SYS_sched_setattr, 0, &attributes, 0U);
}

void runInBackground()
{
    // Counted from the main thread, for threads are used again and would sink lower each time.
    const int usual = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
    const auto self = static_cast<id_t>(syscall(SYS_gettid));
    setpriority(PRIO_PROCESS, self, std::min(usual + backgroundNiceness, greatestNiceness));
}

} // namespace stackreel
