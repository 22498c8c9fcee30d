#pragma once

#include <chrono>

namespace stackreel
{

class AppModel;

/// What is left to do when the event loop has ended. Main thread.
struct Shutdown {
    /// Cancels every export that has not ended and waits until it has cleaned up after itself; has every
    /// other child end as well, and waits for the load it belonged to. A child that takes no hints for the
    /// time of `patience` is killed, so this ends in any case.
    static void run(AppModel& model, std::chrono::milliseconds patience = std::chrono::seconds(4));
};

} // namespace stackreel
