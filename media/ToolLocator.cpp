#include "media/ToolLocator.h"

#include "media/MediaToolError.h"
#include "platform/Bundle.h"
#include "platform/Files.h"

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

std::vector<std::filesystem::path> ToolLocator::candidates(MediaTool tool, const Surroundings& surroundings)
{
    const std::filesystem::path name = executableName(tool);
    const auto bundled = std::filesystem::path("third_party/ffmpeg/bin") / name;
    std::vector<std::filesystem::path> places;
    if (surroundings.resourceDirectory)
        places.push_back(*surroundings.resourceDirectory / name);
    if (surroundings.workingDirectory) {
        places.push_back(*surroundings.workingDirectory / bundled);
        places.push_back(surroundings.workingDirectory->parent_path() / bundled);
    }
    places.push_back("/opt/homebrew/bin" / name);
    places.push_back("/usr/local/bin" / name);
    return places;
}

std::filesystem::path ToolLocator::locate(MediaTool tool, const Surroundings& surroundings)
{
    const auto places = candidates(tool, surroundings);
    const auto found = std::find_if(places.begin(), places.end(), surroundings.isExecutable);
    if (found == places.end())
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
