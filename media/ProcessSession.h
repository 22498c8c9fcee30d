#pragma once

#include "media/ProcessOutput.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace stackreel
{

class ChildProcess;

/// Called on the worker thread right after a child is launched, with the file that captures its standard
/// error. The file grows while the child runs and is removed when it has ended. A handle opened during the
/// call stays readable after that. Must not throw.
using LaunchCallback = std::function<void(const std::filesystem::path& standardErrorFile)>;

/// One run of one child. Shared by the worker thread that blocks in `run` and the threads that may cancel it.
class ProcessSession
{
public:
    /// Starts the child, waits for it and returns its output, whatever its status. `environment` has the
    /// variables "NAME=value" that it gets in addition to those of this process. Blocking; at most once per
    /// object. Output is captured in files, so the child never blocks however much it writes.
    ///
    /// Throws `CancellationError` when `cancel` was called before the child had ended, even if it ended
    /// normally; `SystemError` when the capture cannot be set up, read back or flushed, or the child cannot
    /// be launched.
    ProcessOutput run(const std::filesystem::path& executable, const std::vector<std::string>& arguments,
                      const LaunchCallback& launched = {}, const std::vector<std::string>& environment = {});

    /// Asks the child to end, now or as soon as it has been launched. Any thread, any number of times,
    /// before, during or after `run`.
    void cancel();
    /// Kills the child if one runs. Any thread.
    void kill();

private:
    std::shared_ptr<ChildProcess> runningChild();
    bool isCancelled();
    bool storeProcess(std::shared_ptr<ChildProcess> process);

    std::mutex m_lock; // guards the two fields below; never held while launching, waiting or accessing files
    std::shared_ptr<ChildProcess> m_process;
    bool m_cancelled = false;
};

} // namespace stackreel
