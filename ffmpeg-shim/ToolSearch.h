#pragma once

#include "ffmpeg-shim/FileIdentity.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// A program that was found on the search path.
struct FoundTool {
    std::string path;
    FileIdentity identity;
};

/// The folders in the value of PATH, in order. Empty and relative entries are ignored: they refer to the
/// working directory, and a program must not be taken from a folder that happens to contain clips. A null
/// pointer, which means that PATH is not set, stands for "/usr/local/bin:/usr/bin:/bin".
std::vector<std::string> searchFolders(const char* path);

/// The folders in which Stackreel looks for a tool after its resource directory: third_party/ffmpeg/bin below
/// the working directory and below the parent of that, /opt/homebrew/bin, /usr/local/bin. If the working
/// directory has been removed, the first two are missing.
std::vector<std::string> fixedFolders(const std::optional<std::filesystem::path>& workingDirectory);

/// The first file named `name` in `folders` that this user may execute and that is not one of `avoided`.
/// Anything that is not a regular file, such as a directory or a dangling link, is ignored. Returns
/// `std::nullopt` if no folder contains such a file.
std::optional<FoundTool> findTool(std::string_view name, const std::vector<std::string>& folders,
                                  const std::vector<FileIdentity>& avoided);

/// The path of the system's own tool called `name` ("ffmpeg" or "ffprobe"): the first one in
/// `fixedFolders` and then on PATH that is not this program.
///
/// PATH may contain two copies of this program, or a script that starts this program again; each would then
/// start the other for ever. To prevent that, the environment variable STACKREEL_SHIM_VISITED_ffmpeg or
/// STACKREEL_SHIM_VISITED_ffprobe lists the files that have already run as this program or that it has chosen
/// under that name, and none of them is chosen again under it. The other name may lead to the same file: some
/// package managers install both tools as links to one launcher. The call adds this program and the tool that
/// it returns to the variable, which the next program inherits.
std::optional<std::string> systemTool(const std::string& name);

} // namespace stackreel::shim
