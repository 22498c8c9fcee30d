#include "ffmpeg-shim/ToolSearch.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace stackreel::shim
{

namespace
{

/// The environment variable with the files that were visited under a name.
std::string visitedVariable(const std::string& name)
{
    return "STACKREEL_SHIM_VISITED_" + name;
}

bool isExecutableFile(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    return ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

std::vector<FileIdentity> visitedFiles(const std::string& name)
{
    const char* const text = std::getenv(visitedVariable(name).c_str());
    std::vector<FileIdentity> visited = identitiesFromText(text ? text : "");
    if (const auto self = identityOf("/proc/self/exe"))
        visited.push_back(*self);
    return visited;
}

std::optional<std::filesystem::path> workingDirectory()
{
    std::error_code error;
    auto directory = std::filesystem::current_path(error);
    if (error)
        return std::nullopt;
    return directory;
}

} // namespace

std::vector<std::string> searchFolders(const char* path)
{
    std::string_view rest = path ? path : "/usr/local/bin:/usr/bin:/bin";
    std::vector<std::string> folders;
    while (!rest.empty()) {
        const std::size_t colon = rest.find(':');
        if (rest.front() == '/')
            folders.emplace_back(rest.substr(0, colon));
        rest.remove_prefix(colon == std::string_view::npos ? rest.size() : colon + 1);
    }
    return folders;
}

std::vector<std::string> fixedFolders(const std::optional<std::filesystem::path>& workingDirectory)
{
    std::vector<std::string> folders;
    if (workingDirectory)
        for (const auto& directory : {*workingDirectory, workingDirectory->parent_path()})
            folders.push_back(directory / "third_party/ffmpeg/bin");
    folders.emplace_back("/opt/homebrew/bin");
    folders.emplace_back("/usr/local/bin");
    return folders;
}

std::optional<FoundTool> findTool(std::string_view name, const std::vector<std::string>& folders,
                                  const std::vector<FileIdentity>& avoided)
{
    for (const std::string& folder : folders) {
        const std::string path = folder + (folder.ends_with('/') ? "" : "/") + std::string(name);
        const auto identity = identityOf(path);
        if (!identity || std::ranges::find(avoided, *identity) != avoided.end())
            continue;
        if (isExecutableFile(path))
            return FoundTool{path, *identity};
    }
    return std::nullopt;
}

std::optional<std::string> systemTool(const std::string& name)
{
    std::vector<FileIdentity> visited = visitedFiles(name);
    std::vector<std::string> folders = fixedFolders(workingDirectory());
    std::ranges::copy(searchFolders(std::getenv("PATH")), std::back_inserter(folders));
    const auto tool = findTool(name, folders, visited);
    if (!tool)
        return std::nullopt;
    visited.push_back(tool->identity);
    ::setenv(visitedVariable(name).c_str(), identitiesText(visited).c_str(), 1);
    return tool->path;
}

} // namespace stackreel::shim
