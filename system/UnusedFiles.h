#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace stackreel
{

/// Files that an earlier program has left behind: they belong to this user, no process of this machine has
/// them open, and they have not changed for a day, because a program on another machine may use them over a
/// network. Any thread.
struct UnusedFiles {
    using NameCheck = std::function<bool(const std::string&)>;

    /// Removes the unused files with such a name. What cannot be removed stays.
    static void remove(const std::filesystem::path& folder, const NameCheck& isName) noexcept;

    /// Removes the unused files with such names in the folders with such a name that belong to this user and
    /// have not changed for a day, and each such folder if it is then empty. A folder that had none stays.
    static void removeFolders(const std::filesystem::path& parent, const NameCheck& isName,
                              const NameCheck& isFileName) noexcept;
};

} // namespace stackreel
