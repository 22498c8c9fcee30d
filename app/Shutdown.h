#pragma once

#include <chrono>

namespace stackreel
{

class AppModel;

/// The clean-up after the event loop has ended. Main thread.
struct Shutdown {
    /// Cancels every export and every load that has not ended, ends all children, and waits until the exports
    /// have cleaned up and the loads have ended. A child that is still running after `gracePeriod` is killed.
    /// If one cannot be killed, the program exits after twice that time, and `CleanupProcess` does the rest.
    static void run(AppModel& model, std::chrono::milliseconds gracePeriod = std::chrono::seconds(1));
};

} // namespace stackreel
