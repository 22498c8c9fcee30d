#pragma once

#include "cli/FrontChange.h"
#include "cli/ProgressDisplay.h"
#include "framing/ExportCommandBuilder.h"
#include "model/PartialFile.h"

#include <QCoroTask>

#include <stop_token>
#include <vector>

namespace stackreel
{

/// An export that was rendered, checked and moved into place.
struct RenderedExport {
    double seconds = 0;               ///< the length that the written file states; 0 if it states none
    std::vector<FrontChange> changes; ///< what the front reported

    /// Renders the request into the destination of `partial` and shows the progress. Throws what
    /// `FileExport::run` throws. Resumes on the calling thread, which needs a running event loop.
    static QCoro::Task<RenderedExport> render(PartialFile& partial, ExportRequest request,
                                              ProgressStyle progress, std::stop_token stop);
};

} // namespace stackreel
