#pragma once

#include "model/ExportError.h"

#include <filesystem>

namespace stackreel
{

/// The file that an export is written to.
struct Destination {
    std::filesystem::path named; ///< absolute; as the user named it
    std::filesystem::path file;  ///< absolute; the file to write, with symbolic links resolved
    bool replace = false;        ///< whether an existing file may be replaced

    /// Checks the destination before anything is rendered; `source` and `destination` are absolute.
    ///
    /// Throws `ExportError` when the destination exists and must not be replaced, is not a regular file, is
    /// in a folder that does not exist, or is the source itself, also under another name. Throws
    /// `SystemError` when the destination cannot be examined.
    static Destination check(const std::filesystem::path& source, const std::filesystem::path& destination,
                             bool overwrite);

    /// The error for a file that is there and must not be replaced.
    ExportError alreadyExists() const;
};

} // namespace stackreel
