#pragma once

#include "model/ExportTurn.h"
#include "model/PartialFile.h"
#include "model/SourceExport.h"

namespace stackreel
{

/// Exports from request to verified file. Both operations resume on the calling thread, which needs a running
/// event loop.
struct FileExport {
    /// Renders the request into `partial`, whatever its output, checks the result, and moves it into place.
    /// Returns the report on the file. Throws what `exportSource`, `checkExport` and
    /// `PartialFile::moveIntoPlace` throw, and what `PartialFile::requireInPlace` throws instead of a failure
    /// of `exportSource`; the destination is unchanged then, unless it is the partial file itself.
    static QCoro::Task<ProbeDocument> run(PartialFile& partial, ExportRequest request, std::stop_token stop,
                                          LaunchCallback launched = {});

    /// The window's export to the request's output, which the user has confirmed. Returns the output.
    ///
    /// A new output exists, empty, from the start. While the export waits for its turn, no other program or
    /// export can take the name, and a panel asks before the file is replaced. The turn is requested within
    /// this call and ends with the export.
    ///
    /// A file that is there stays as it was until the new one is whole and takes its place in one step. When
    /// the export fails, what was written stays at the output, or, where a file was there before, beside it
    /// with " (unfinished)" in its name. After a cancellation, or after a signal that asks the program to
    /// end, nothing of it is left. Throws `ExportError` or `SystemError` for an output that cannot be written
    /// or is the source itself, `MediaToolError` when the tool is missing, each before any file is changed,
    /// and what `run` and `waitForTurn` throw. No file is looked at or removed on the calling thread, because
    /// the folder may be on a slow network.
    static QCoro::Task<std::filesystem::path> replace(ExportRequest request, WaitForTurn waitForTurn,
                                                      std::stop_token stop);
};

} // namespace stackreel
