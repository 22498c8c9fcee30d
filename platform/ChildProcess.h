#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace stackreel
{

/// What a child is started with. The descriptors belong to the caller and may be closed once `launch`
/// returns.
struct ChildProcessLaunch {
    std::filesystem::path executable;   ///< absolute path; PATH is never searched
    std::vector<std::string> arguments; ///< without the program's own name; bytes, passed as they are
    int standardOutput;                 ///< descriptor above 2 that becomes the child's standard output
    int standardError;                  ///< descriptor above 2 that becomes the child's standard error
};

/// A running child of this process.
///
/// The child is collected ("reaped") when the last reference to the object goes, and not before. Whoever
/// holds a reference can therefore signal the child at any time, from any thread, without ever reaching a
/// stranger that was given the same process id.
class ChildProcess
{
public:
    /// Starts the child. It inherits standard input, environment and working directory and no other
    /// descriptor, and begins with default signal dispositions and an empty signal mask, whatever this
    /// process has set for itself.
    ///
    /// Throws `SystemError`, at once, when the program does not exist, is a folder or not executable, has a
    /// missing interpreter or an unknown format, when the system cannot start another process, or when
    /// children may start no more (`RunningChildren::end`).
    static std::shared_ptr<ChildProcess> launch(const ChildProcessLaunch& launch);

    /// Collects the child; blocks while it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Blocks until the child has ended, without collecting it. Gives its exit status, or the signal's number
    /// for a child that a signal ended. Throws `SystemError` when the child cannot be waited for.
    int waitForExit();

    /// Asks a running child to end (SIGTERM); nothing happens when it has ended. Any thread.
    void terminate() const;

private:
    ChildProcess(pid_t pid, std::filesystem::path executable);

    pid_t m_pid;
    std::filesystem::path m_executable;
};

} // namespace stackreel
