#pragma once

#include "platform/shim/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// A program found on the search path.
struct FoundTool {
    std::string path;
    FileIdentity identity;
};

/// The folders named by a PATH value, in order. Only absolute entries count: an empty or relative entry
/// stands for a place below the current folder, and a clip's folder is no place to take a program from. No
/// value at all (a null pointer, not an empty text) stands for "/usr/local/bin:/usr/bin:/bin".
std::vector<std::string> searchFolders(const char* path);

/// The first file named `name` in `folders` that this user may execute and that is not one of `avoided`.
/// Directories, other non-files and dangling links are passed over; nothing where no folder has one.
std::optional<FoundTool> findTool(std::string_view name, const std::vector<std::string>& folders,
                                  const std::vector<FileIdentity>& avoided);

/// The system's own tool called `name` ("ffmpeg" or "ffprobe"): the first on PATH that is not this program.
///
/// Two copies of this program may stand on one PATH, and a script on it may lead back here, so that each
/// would start the other for ever. Hence the environment variable STACKREEL_SHIM_VISITED hands down which
/// files have already been this program or been chosen by it; none of them is chosen again. The call adds
/// this program and the tool it returns to that variable, for whatever is started next.
std::optional<std::string> systemTool(const std::string& name);

} // namespace stackreel::shim
