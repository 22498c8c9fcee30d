#pragma once

#include "media/MediaTool.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace stackreel
{

/// Finds the executables of the media tools. Holds nothing between calls; any thread.
struct ToolLocator {
    /// Where a search looks; what `locate` reads from the system at each call.
    struct Surroundings {
        std::optional<std::filesystem::path> resourceDirectory; ///< none when the program has none
        std::optional<std::filesystem::path> workingDirectory; ///< none when it was deleted under the process
        std::function<bool(const std::filesystem::path&)> isExecutable;
    };

    /// The tool's executable: the first executable one of the candidates below. Throws `MediaToolError` (tool
    /// missing) when none is.
    static std::filesystem::path locate(MediaTool tool);
    static std::filesystem::path locate(MediaTool tool, const Surroundings& surroundings);

    /// The places looked at, in order: the resource directory; third_party/ffmpeg/bin under the working
    /// directory and under its parent; /opt/homebrew/bin; /usr/local/bin. A place that cannot be named is
    /// left out. PATH plays no part.
    static std::vector<std::filesystem::path> candidates(MediaTool tool, const Surroundings& surroundings);
};

} // namespace stackreel
