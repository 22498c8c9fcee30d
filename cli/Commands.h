#pragma once

#include "cli/CliOptions.h"

#include <QCoroTask>

#include <stop_token>

namespace stackreel
{

/// The commands of the program. Each prints its result to standard output and resumes on the calling thread,
/// which needs a running event loop. All throw `CancellationError` when a stop was requested, and otherwise
/// errors whose `what()` is meant for the user.
struct Commands {
    /// Prints the properties of a video.
    static QCoro::Task<> probe(ProbeOptions options, std::stop_token stop);

    /// Makes the vertical video, or prints the arguments of `ffmpeg` if `dryRun` is set. When it returns, the
    /// destination holds the export, which has passed `checkExport`. When it throws, the destination is
    /// unchanged and no temporary file is left.
    static QCoro::Task<> exportVideo(ExportOptions options, std::stop_token stop);
};

} // namespace stackreel
