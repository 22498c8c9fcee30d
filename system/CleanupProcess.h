#pragma once

#include "system/FileIdentity.h"

#include <sys/types.h>

#include <atomic>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// A second process that cleans up when this one has ended, in whatever way: by `exit`, by `_exit`, by a
/// signal or by a crash. It kills the children that are left and removes the temporary paths that are left.
struct CleanupProcess {
    /// Starts the process. Call it in `main`, once, before there are other threads. Without this call, or
    /// when the system cannot start a process, nothing is cleaned up.
    static void start();

    /// Makes a child known. Call `removeChild` before the child is reaped: the system may reuse its id
    /// afterwards. Any thread.
    static void addChild(pid_t child);
    static void removeChild(pid_t child);
};

/// A file or folder that must not outlive this process: `CleanupProcess` removes it if the process ends while
/// the object exists. The destructor removes nothing. Any thread.
class TemporaryPath
{
public:
    /// The path must be absolute. If `file` is given, the path is removed only while it leads to that file.
    /// Otherwise it is a folder, which may not exist yet and is removed with its content.
    explicit TemporaryPath(const std::filesystem::path& path,
                           std::optional<FileIdentity> file = std::nullopt);
    ~TemporaryPath();
    TemporaryPath(const TemporaryPath&) = delete;
    TemporaryPath& operator=(const TemporaryPath&) = delete;

private:
    std::atomic<bool>* m_used = nullptr; ///< of the entry; null when the path is not known to the process
};

} // namespace stackreel
