#pragma once

#include "system/InfoDictionary.h"

#include <filesystem>
#include <optional>

namespace stackreel
{

/// The locations of the program's own files.
struct Bundle {
    /// The directory in which the program's resources are installed: `../lib/stackreel`, relative to the
    /// executable's directory with symbolic links resolved. Returns `std::nullopt` when the directory does
    /// not exist. Any thread.
    static std::optional<std::filesystem::path> resourceDirectory();
    /// The program's information dictionary: `Info.json` in the resource directory. Each call reads the file
    /// again. The dictionary is empty when there is no such file. Any thread.
    static InfoDictionary infoDictionary();
};

} // namespace stackreel
