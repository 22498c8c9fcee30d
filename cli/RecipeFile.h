#pragma once

#include "cli/CliOptions.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>

namespace stackreel
{

/// Recipes on disk: in files of their own, and as comments of exported videos.
struct RecipeFile {
    /// The choices in the options, and otherwise those of the recipe or the video that the options name.
    ///
    /// Throws `CliError` when that is no file or has no valid recipe, `UsageError` when the choices together
    /// give an empty range, and what `MediaProbe::report` throws. Resumes on the calling thread, which needs
    /// a running event loop.
    static QCoro::Task<Recipe> choices(ExportOptions options, std::stop_token stop);

    /// Writes the recipe of a request to a file, in one step. Throws `ExportError` or `SystemError` when the
    /// file is the source, the destination of the request, or cannot be written, or when it exists and must
    /// not be replaced.
    static void save(const ExportRequest& request, const std::filesystem::path& file, bool overwrite);
};

} // namespace stackreel
