#pragma once

#include <memory>

namespace stackreel
{

class TaskHandle;

/// What is left to do when the program is asked to end in the middle of an export. Main thread.
struct ExportShutdown {
    /// Cancels the task, or does nothing with none, and runs the event loop until it has ended: by then its
    /// child has ended and the partial file is gone. Meanwhile the user's input waits in its queue. Works
    /// inside a running event loop as well as after the last one has ended; whatever the task writes to has
    /// to be there still.
    static void endExport(const std::shared_ptr<TaskHandle>& task);
};

} // namespace stackreel
