#pragma once

#include <memory>

namespace stackreel
{

class TaskHandle;

/// Ends exports when the program quits. Main thread only.
struct ExportShutdown {
    /// Cancels the task and processes events, except user input, until the task has ended. When this returns,
    /// the child process of the task has ended and the partial file is removed. Does nothing if `task` is
    /// null. May be called while an event loop is running and after the last one has ended. The objects that
    /// the task uses must still exist.
    static void endExport(const std::shared_ptr<TaskHandle>& task);
};

} // namespace stackreel
