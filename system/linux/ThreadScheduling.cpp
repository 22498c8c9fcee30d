#include "system/ThreadScheduling.h"

#include <linux/sched.h>
#include <linux/sched/types.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace stackreel
{

namespace
{

/// The requested time slice in nanoseconds: the shortest that Linux accepts. Since Linux 6.12 a thread with a
/// shorter slice is scheduled earlier. Older kernels prefer a thread that has slept.
constexpr unsigned long long shortestSlice = 100'000;

} // namespace

// Raising the nice value of decoding threads instead would not work: GLib resets it for each thread that it
// starts, an unprivileged program may not lower it again, and GLib prints a warning.
void requestShortTimeSlice()
{
    if (syscall(SYS_sched_getscheduler, 0) != SCHED_NORMAL)
        return; // the user has set another scheduling policy for this program
    sched_attr attributes = {};
    attributes.size = sizeof attributes;
    attributes.sched_nice = getpriority(PRIO_PROCESS, 0);
    attributes.sched_runtime = shortestSlice;
    syscall(SYS_sched_setattr, 0, &attributes, 0U);
}

} // namespace stackreel
