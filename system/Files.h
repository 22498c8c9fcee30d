#pragma once

#include "system/FileIdentity.h"

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace stackreel
{

/// A file open for writing. The destructor closes it. A child never inherits the descriptor. The descriptor
/// is never that of a standard stream (0 to 2), even in a process that was started with those closed. Any
/// thread, but only one at a time.
class WriteHandle
{
public:
    /// Opens an existing file for writing at its start. Throws `SystemError`.
    explicit WriteHandle(const std::filesystem::path& path);
    /// Takes over a descriptor that is open for writing. The path is for messages.
    WriteHandle(const std::filesystem::path& path, int descriptor);
    ~WriteHandle();
    WriteHandle(const WriteHandle&) = delete;
    WriteHandle& operator=(const WriteHandle&) = delete;

    int descriptor() const { return m_descriptor; }
    /// Throws `SystemError`.
    FileIdentity identity() const;
    /// The size of the file in bytes; 0 if it cannot be found out.
    std::uintmax_t size() const noexcept;
    /// A failure is ignored: some file systems fix the permissions of all files and refuse to set any.
    void setPermissions(std::filesystem::perms permissions) const noexcept;
    /// Flushes what was written to disk. Throws `SystemError`.
    void synchronize() const;
    /// Whether the file system has no room for more of this file, or the user's share is used up. False where
    /// the file system cannot tell.
    bool isDiskFull() const noexcept;

private:
    std::filesystem::path m_path;
    int m_descriptor;
};

/// File operations of the host system that the standard library lacks, or for which its error messages are
/// not fit for users. Paths are bytes. Any thread. A failure throws `SystemError`.
struct Files {
    /// The absolute path of the user's folder for temporary files: TMPDIR if it is set, otherwise /tmp. The
    /// folder need not exist.
    static std::filesystem::path temporaryDirectory();
    /// Creates the folder and its missing parents. Does nothing if the folder exists.
    static void createDirectories(const std::filesystem::path& path);
    /// Creates one new folder that only this user may enter, and its missing parents. An existing folder is
    /// an error.
    static void createPrivateDirectory(const std::filesystem::path& path);
    /// Creates an empty file; an existing file is not changed. Does not throw: returns 0, or the errno value
    /// of the failure. A caller that opens the file next may ignore the result.
    static int createEmpty(const std::filesystem::path& path);
    /// The whole content of a file, as bytes.
    static std::string readAll(const std::filesystem::path& path);
    /// Whether the path is a file, not a folder, that the current user may execute.
    static bool isExecutable(const std::filesystem::path& path);
};

} // namespace stackreel
