#pragma once

#include <sys/stat.h>

#include <filesystem>

namespace stackreel
{

/// Opens a file relative to a folder's descriptor (AT_FDCWD for the working directory) and returns a
/// descriptor above 2 that no child inherits, or -1 with the reason in errno. `mode` is for files that are
/// created.
int openCloseOnExec(int folder, const std::filesystem::path& path, int flags,
                    mode_t mode = S_IRUSR | S_IWUSR);

} // namespace stackreel
