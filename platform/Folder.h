#pragma once

#include <filesystem>
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

    /// Creates a new empty file with these permissions, reduced by the user's file mode mask. Throws nothing:
    /// returns 0, or the errno value of a failure, EEXIST for a name that is taken.
    int createNew(const std::string& name, std::filesystem::perms permissions) const;
    /// Removes a file; a failure is ignored.
    void remove(const std::string& name) const noexcept;
    /// The size of a file in bytes; 0 where there is none.
    std::uintmax_t sizeOf(const std::string& name) const noexcept;
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
