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

/// Runs the media tools. Holds nothing between calls.
struct ProcessRunner {
    /// Runs a program to its end on a worker thread and gives what it wrote on the calling thread, which
    /// needs a running event loop. The status is not interpreted. The arguments are bytes and reach the child
    /// one by one, with no shell in between. When the stop token fires the child is asked to end.
    ///
    /// Throws `CancellationError` when the token fired before the child had ended, or already before the
    /// call; otherwise what `ProcessSession::run` throws. Every temporary file is gone afterwards, whatever
    /// happened.
    static QCoro::Task<ProcessOutput> run(std::filesystem::path executable,
                                          std::vector<std::string> arguments, std::stop_token stop = {},
                                          ChildLaunched launched = {});
};

} // namespace stackreel
