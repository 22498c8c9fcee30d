#pragma once

#include "media/MediaTool.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace stackreel
{

/// Finds the executables of the media tools. Keeps no state between calls; any thread.
struct ToolLocator {
    /// What a search depends on. `locate` with one argument reads it from the system at each call.
    struct Environment {
        std::optional<std::filesystem::path> resourceDirectory; ///< empty when the program has none
        std::optional<std::filesystem::path> workingDirectory;  ///< empty when it has been deleted
        std::function<bool(const std::filesystem::path&)> isExecutable;
    };

    /// The tool's executable: the first of the candidates below that is executable. Throws `MediaToolError`
    /// (tool missing) when there is none.
    static std::filesystem::path locate(MediaTool tool);
    static std::filesystem::path locate(MediaTool tool, const Environment& environment);

    /// The paths that are tried, in this order: in the resource directory; in third_party/ffmpeg/bin under
    /// the working directory and under its parent; in /opt/homebrew/bin; in /usr/local/bin. A missing
    /// directory is skipped. PATH is not used.
    static std::vector<std::filesystem::path> candidates(MediaTool tool, const Environment& environment);
};

} // namespace stackreel
