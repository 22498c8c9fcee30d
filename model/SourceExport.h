#pragma once

#include "framing/ExportCommandBuilder.h"
#include "media/ProbeDocument.h"
#include "media/ProcessSession.h"

#include <QCoroTask>

#include <stop_token>

namespace stackreel
{

/// Renders a request with `ffmpeg` and returns the report of `ffprobe` on the written file. Reads the source
/// itself, never a preview. The output must not be the source (`Destination::check`).
///
/// Throws `ExportError` when no readable file was written or when it does not begin or end with the pictures
/// of the source (`checkPictures`); `MediaToolError` when a tool is missing or fails, `CancellationError`
/// when a stop was requested, `TemporaryFolderFull`, and the other errors of `ProcessRunner::run`. A partly
/// written file is left in place. If `launched` is set, the front reports its changes in the tool's standard
/// error (`STACKREEL_REPORT_CHANGES`), also in the message of a failure. The front also gets the request as a
/// recipe, to write it into the file (`STACKREEL_RECIPE`). Resumes on the calling thread, which
/// needs a running event loop.
QCoro::Task<ProbeDocument> exportSource(ExportRequest request, std::stop_token stop = {},
                                        LaunchCallback launched = {});

} // namespace stackreel
