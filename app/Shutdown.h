#pragma once

#include "system/RunningChildren.h"

#include <chrono>

namespace stackreel
{

class AppModel;

/// The clean-up after the event loop has ended. Main thread.
struct Shutdown {
    /// Cancels every export and every load that has not ended, ends all children, and waits until the exports
    /// have cleaned up and the loads have ended. A child that is still running after `gracePeriod` is killed.
    /// If one cannot be killed, the program exits, so this call never waits for ever.
    static void run(AppModel& model, std::chrono::milliseconds gracePeriod = RunningChildren::gracePeriod);
};

} // namespace stackreel
