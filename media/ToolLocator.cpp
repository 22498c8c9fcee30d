#include "media/ToolLocator.h"

#include "media/MediaToolError.h"
#include "system/Bundle.h"
#include "system/Files.h"

#include <algorithm>

namespace stackreel
{

namespace
{

std::optional<std::filesystem::path> currentWorkingDirectory()
{
    std::error_code error;
    auto directory = std::filesystem::current_path(error);
    if (error)
        return std::nullopt;
    return directory;
}

} // namespace

std::vector<std::filesystem::path> ToolLocator::candidates(MediaTool tool, const Environment& environment)
{
    const std::filesystem::path name = executableName(tool);
    const auto bundled = std::filesystem::path("third_party/ffmpeg/bin") / name;
    std::vector<std::filesystem::path> paths;
    if (environment.resourceDirectory)
        paths.push_back(*environment.resourceDirectory / name);
    if (environment.workingDirectory) {
        paths.push_back(*environment.workingDirectory / bundled);
        paths.push_back(environment.workingDirectory->parent_path() / bundled);
    }
    paths.push_back("/opt/homebrew/bin" / name);
    paths.push_back("/usr/local/bin" / name);
    return paths;
}

std::filesystem::path ToolLocator::locate(MediaTool tool, const Environment& environment)
{
    const auto paths = candidates(tool, environment);
    const auto found = std::find_if(paths.begin(), paths.end(), environment.isExecutable);
    if (found == paths.end())
        throw MediaToolError::toolMissing(std::string(executableName(tool)));
    return *found;
}

std::filesystem::path ToolLocator::locate(MediaTool tool)
{
    return locate(tool, {.resourceDirectory = Bundle::resourceDirectory(),
                         .workingDirectory = currentWorkingDirectory(),
                         .isExecutable = Files::isExecutable});
}

} // namespace stackreel
