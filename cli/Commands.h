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

    /// Makes the vertical video. When it returns, the destination holds the export, which has passed
    /// `checkExport`, even if that could not be written to standard output. When it throws, the
    /// destination is unchanged and no other file is left but the recipe, which is written before rendering.
    ///
    /// With `json` it prints the lines of `ExportEvents` to standard output. With `dryRun` it prints the
    /// arguments of `ffmpeg` instead, and refuses what the export would refuse before rendering.
    static QCoro::Task<> exportVideo(ExportOptions options, std::stop_token stop);

    /// Exports several sources, one after the other. A failure is printed, and the next source follows.
    /// Throws `CliError` with a summary at the end when one has failed; before anything is rendered, when two
    /// of them would have the same destination or one would replace another, and when the folder does not
    /// exist. With `json` the last line is a summary.
    static QCoro::Task<> exportMany(ExportManyOptions options, std::stop_token stop);
};

} // namespace stackreel
