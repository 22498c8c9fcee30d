#pragma once

#include "platform/InfoDictionary.h"

#include <filesystem>
#include <optional>

namespace stackreel
{

/// Where the program's own files are.
struct Bundle {
    /// The directory the program's resources are installed in: `../lib/stackreel` seen from the running
    /// executable's directory, with symbolic links resolved. None when there is no such directory. Any
    /// thread.
    static std::optional<std::filesystem::path> resourceDirectory();
    /// The program's information dictionary: `Info.json` in the resource directory. Each call reads the file
    /// again. The dictionary is empty when there is no such file. Any thread.
    static InfoDictionary infoDictionary();
};

} // namespace stackreel
