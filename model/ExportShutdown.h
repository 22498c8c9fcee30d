#pragma once

#include <memory>

namespace stackreel
{

class TaskHandle;

/// Ends exports when the program quits. Main thread.
struct ExportShutdown {
    /// Cancels the task and processes events, except user input, until it has ended: by then its child
    /// process has ended and the partial file is removed. Does nothing with a null task. Works inside a
    /// running event loop and after the last one has ended. The objects that the task uses must still exist.
    static void endExport(const std::shared_ptr<TaskHandle>& task);
};

} // namespace stackreel
