#pragma once

#include "media/ProcessOutput.h"
#include "media/ProcessSession.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace stackreel
{

/// Runs the media tools. Keeps no state between calls.
struct ProcessRunner {
    /// Runs a program to its end on a worker thread. Resumes on the calling thread, which needs a running
    /// event loop, and returns the program's output. The status is not interpreted. The arguments are bytes
    /// and are passed to the child without a shell, and `environment` has the variables "NAME=value" that it
    /// gets in addition to those of this process. When the stop token fires the child is asked to end, and
    /// killed if it still runs after `RunningChildren::gracePeriod`.
    ///
    /// Throws `CancellationError` when the token fired before the child had ended, or already before the
    /// call; otherwise what `ProcessSession::run` throws. All temporary files are removed in every case.
    static QCoro::Task<ProcessOutput> run(std::filesystem::path executable,
                                          std::vector<std::string> arguments, std::stop_token stop = {},
                                          LaunchCallback launched = {},
                                          std::vector<std::string> environment = {});
};

} // namespace stackreel
