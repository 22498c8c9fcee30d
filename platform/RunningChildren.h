#pragma once

#include <cstddef>

namespace stackreel
{

/// The children of this process that have not been collected, as the end of the program sees them. Any
/// thread.
struct RunningChildren {
    static std::size_t count();
    /// Asks all of them to end (SIGTERM) and lets no other start: from now on launching one throws
    /// `SystemError`. Cannot be taken back.
    static void end();
    /// Ends those that are left, whether they want to or not (SIGKILL).
    static void kill();
};

} // namespace stackreel
