#pragma once

#include "framing/ExportCommandBuilder.h"
#include "media/ProcessSession.h"

#include <QCoroTask>

#include <stop_token>

namespace stackreel
{

/// Renders a request with `ffmpeg` and gives its destination. The source itself is read, never a preview.
///
/// Throws `std::runtime_error`, before anything is touched and even when cancelled, when the destination is
/// the source under whatever name; `MediaToolError` when the tool is missing or fails, `CancellationError`
/// when the token fired, and the other errors of `ProcessRunner::run`. What was written so far is left in
/// place. Resumes on the calling thread, which needs a running event loop.
QCoro::Task<std::filesystem::path> exportSource(ExportRequest request, std::stop_token stop = {},
                                                ChildLaunched launched = {});

} // namespace stackreel
