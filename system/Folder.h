#pragma once

#include "system/Files.h"

#include <filesystem>
#include <optional>
#include <string>

namespace stackreel
{

/// A folder that is held open, so that its files are reached even after the folder itself was renamed. Names
/// are those of files directly in it. Any thread.
class Folder
{
public:
    /// Throws `SystemError` when the folder cannot be opened.
    explicit Folder(const std::filesystem::path& path);
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Creates a new empty file with these permissions, reduced by the user's file mode mask, and opens it as
    /// `file`. Throws nothing: returns 0, or the errno value of a failure, EEXIST for a name that is taken.
    int createNew(const std::string& name, std::filesystem::perms permissions,
                  std::optional<WriteHandle>& file) const;
    /// Whether the name is that of this file, not of a link to it. Throws `SystemError` when the system does
    /// not tell.
    bool contains(const std::string& name, FileIdentity file) const;
    /// Removes the file if it still has the name; a failure is ignored. The system cannot do both in one
    /// step: another program that gives the name to a file of its own right between them loses that file.
    void remove(const std::string& name, FileIdentity file) const noexcept;
    /// Whether an existing file may be replaced. Returns 0 or an errno value, for example EPERM for the file
    /// of another user in a sticky folder, EISDIR for a folder. Changes nothing, except that an empty folder
    /// is removed that takes the name during this call.
    int errorOnReplacing(const std::string& name) const noexcept;
    /// Renames a file in the folder. With `replace` an existing destination is replaced atomically. Without
    /// it an existing destination is an error (EEXIST) and stays as it was. Throws `SystemError`.
    void rename(const std::string& from, const std::string& to, bool replace) const;
    /// Writes new and changed names to disk, as far as the file system can.
    void synchronize() const noexcept;
    /// Whether the folder still has the path that it was opened by.
    bool isInPlace() const noexcept;

private:
    std::filesystem::path m_path;
    int m_descriptor;
};

} // namespace stackreel
