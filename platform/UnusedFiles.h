#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace stackreel
{

/// Files that an earlier program has left behind: they belong to this user, no process of this machine has
/// them open, and they have not changed for a minute, because a program on another machine may write to them
/// over a network. Any thread.
struct UnusedFiles {
    using NameCheck = std::function<bool(const std::string&)>;

    /// Removes the unused files with such a name. What cannot be removed stays.
    static void remove(const std::filesystem::path& folder, const NameCheck& isName) noexcept;

    /// Removes the folders with such a name that belong to this user, have not changed for a minute and have
    /// nothing in them but unused files with such names. An empty folder stays.
    static void removeFolders(const std::filesystem::path& parent, const NameCheck& isName,
                              const NameCheck& isFileName) noexcept;
};

} // namespace stackreel
