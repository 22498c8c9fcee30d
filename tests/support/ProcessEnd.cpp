#include "tests/support/ProcessEnd.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

/// A function of the leak sanitizer, null in a program without it. It prints the leaks that it finds, and
/// returns whether there are any.
extern "C" [[gnu::weak]] int __lsan_do_recoverable_leak_check(); // NOLINT(bugprone-reserved-identifier)

namespace stackreel
{

namespace
{

/// Whether memory has leaked. Detached threads may free memory until they have ended, so the check is
/// repeated for some seconds.
bool leaks()
{
    using namespace std::chrono_literals;
    if (__lsan_do_recoverable_leak_check == nullptr)
        return false;
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (__lsan_do_recoverable_leak_check() != 0) {
        if (std::chrono::steady_clock::now() > deadline)
            return true;
        std::this_thread::sleep_for(200ms);
    }
    return false;
}

} // namespace

void endProcess(int status)
{
    std::fflush(nullptr);
    std::quick_exit(leaks() ? EXIT_FAILURE : status);
}

} // namespace stackreel
