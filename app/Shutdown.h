#pragma once

#include <chrono>

namespace stackreel
{

class AppModel;

/// The clean-up after the event loop has ended. Main thread.
struct Shutdown {
    /// Cancels every export that has not ended and waits until it has cleaned up. Also ends every other child
    /// and waits for the load that it belongs to. A child that is still running after `gracePeriod` is
    /// killed, so this call always ends.
    static void run(AppModel& model, std::chrono::milliseconds gracePeriod = std::chrono::seconds(4));
};

} // namespace stackreel
