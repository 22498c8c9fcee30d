#pragma once

#include "framing/ExportCommandBuilder.h"
#include "media/ProcessSession.h"

#include <QCoroTask>

#include <stop_token>

namespace stackreel
{

/// Renders a request with `ffmpeg` and returns its destination. Reads the source itself, never a preview.
///
/// Throws:
/// - `std::runtime_error` before any file is changed, even if cancelled, when the destination is the source,
///   also under another name; and after rendering, when the result does not begin and end with the pictures
///   of the source (`checkPictures`);
/// - `MediaToolError` when the tool is missing or fails;
/// - `CancellationError` when a stop was requested, and the other errors of `ProcessRunner::run`.
///
/// A partly written file is left in place. Resumes on the calling thread, which needs a running event loop.
QCoro::Task<std::filesystem::path> exportSource(ExportRequest request, std::stop_token stop = {},
                                                LaunchCallback launched = {});

} // namespace stackreel
