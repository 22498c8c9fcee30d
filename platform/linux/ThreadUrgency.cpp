#include "platform/ThreadUrgency.h"

#include <linux/sched.h>
#include <linux/sched/types.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace stackreel
{

namespace
{

/// How long the thread means to run at a time, in nanoseconds: the least that Linux takes. Whoever means to
/// run shorter goes first, from 6.12 on; until then those went first that had slept.
constexpr unsigned long long shortestSlice = 100'000;

} // namespace

// Threads that decode are left as they are: GLib gives the threads it starts the usual niceness, which a
// user's program may not do any more once it has raised it, and complains.
void runPromptly()
{
    if (syscall(SYS_sched_getscheduler, 0) != SCHED_NORMAL)
        return; // whoever chose another way for this program knows better
    sched_attr attributes = {};
    attributes.size = sizeof attributes;
    attributes.sched_nice = getpriority(PRIO_PROCESS, 0);
    attributes.sched_runtime = shortestSlice;
    syscall(SYS_sched_setattr, 0, &attributes, 0U);
}

} // namespace stackreel
