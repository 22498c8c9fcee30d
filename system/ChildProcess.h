#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace stackreel
{

/// The parameters of a child process. The descriptors belong to the caller, who may close them after `launch`
/// has returned.
struct ChildProcessLaunch {
    std::filesystem::path executable;   ///< absolute path; PATH is never searched
    std::vector<std::string> arguments; ///< without the program's name; bytes, passed unchanged
    int standardOutput;                 ///< descriptor above 2 that becomes the child's standard output
    int standardError;                  ///< descriptor above 2 that becomes the child's standard error
    /// Variables "NAME=value" that the child has in addition to those of this process, whose variables of the
    /// same names it does not inherit.
    std::vector<std::string> environment = {};
};

/// A running child of this process.
///
/// The child is reaped when the last reference to the object is released, and not before. Until then the
/// system cannot reuse its process id. The holder of a reference can therefore signal the child at any time
/// and from any thread, and the signal never reaches another process.
class ChildProcess
{
public:
    /// Starts the child. It inherits standard input, the environment (with the changes that the parameters
    /// request) and the working directory, and no other descriptor. It begins with default signal
    /// dispositions and an empty signal mask, whatever this process has set for itself. There is one
    /// exception: a signal that asks a process to end (SIGINT, SIGTERM, SIGHUP, SIGQUIT) is ignored in the
    /// child if this process ignores it, as under `nohup`.
    ///
    /// Throws `SystemError` when the program does not exist, is a folder or is not executable, when its
    /// interpreter is missing or its format is unknown, when the system cannot start another process, and
    /// after `RunningChildren::end`.
    static std::shared_ptr<ChildProcess> launch(const ChildProcessLaunch& launch);

    /// Reaps the child; blocks while it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Blocks until the child has ended, without reaping it. Returns its exit status, or the signal's number
    /// when a signal ended the child. Throws `SystemError` when waiting fails.
    int waitForExit();
    /// Whether a signal ended the child. To be called after `waitForExit`, on the same thread.
    bool endedBySignal() const { return m_endedBySignal; }

    /// Asks a running child to end (SIGTERM), which it may ignore. Does nothing if the child has ended. Any
    /// thread.
    void terminate() const;
    /// Ends a running child (SIGKILL). Otherwise as `terminate`.
    void kill() const;

private:
    ChildProcess(pid_t pid, std::filesystem::path executable);

    pid_t m_pid;
    std::filesystem::path m_executable;
    bool m_endedBySignal = false;
};

} // namespace stackreel
