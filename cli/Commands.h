#pragma once

#include "cli/CliOptions.h"

#include <QCoroTask>

#include <stop_token>

namespace stackreel
{

/// The commands of the program. Each prints its result to standard output and returns when it is done; it
/// resumes on the calling thread, which needs a running event loop. All throw `CancellationError` when the
/// token fired, and otherwise errors whose `what()` is meant for the user.
struct Commands {
    /// Prints the facts of a video.
    static QCoro::Task<> probe(ProbeOptions options, std::stop_token stop);

    /// Makes the vertical video, or with `dryRun` prints how. When it returns, the destination holds the
    /// export, which was probed and found to be what was asked for; when it throws, the destination is as it
    /// was and nothing else is left.
    static QCoro::Task<> exportVideo(ExportOptions options, std::stop_token stop);
};

} // namespace stackreel
