#pragma once

#include <chrono>
#include <cstddef>

namespace stackreel
{

/// The children of this process that have not been reaped. Used at the end of the program to end them all.
/// Any thread.
struct RunningChildren {
    /// How long a child that was asked to end may take before it is killed.
    static constexpr std::chrono::seconds gracePeriod{4};

    static std::size_t count();
    /// Asks all of them to end (SIGTERM). After this call, launching a child throws `SystemError`; this
    /// cannot be undone.
    static void end();
    /// Kills those that are still running (SIGKILL).
    static void kill();
};

} // namespace stackreel
