#pragma once

#include <filesystem>
#include <system_error>

namespace stackreel
{

/// Whether this process has a file open.
inline bool isOpen(const std::filesystem::path& file)
{
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone) == file)
            return true;
    }
    return false;
}

} // namespace stackreel
