#include "tests/support/ProcessEnd.h"

#include <cstdio>
#include <cstdlib>

/// Of the leak sanitizer, null in a program without it; ends the process when it finds any.
extern "C" [[gnu::weak]] void __lsan_do_leak_check(); // NOLINT(bugprone-reserved-identifier)

namespace stackreel
{

void endProcess(int status)
{
    std::fflush(nullptr);
    if (__lsan_do_leak_check != nullptr)
        __lsan_do_leak_check();
    std::quick_exit(status);
}

} // namespace stackreel
