#include "system/ChildProcess.h"

#include "system/SystemCalls.h"
#include "system/SystemError.h"
#include "system/linux/ChildRegistry.h"
#include "system/linux/EndingSignals.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string_view>

namespace stackreel
{

namespace
{

struct FileActions {
    FileActions() { posix_spawn_file_actions_init(&value); }
    ~FileActions() { posix_spawn_file_actions_destroy(&value); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    /// Returns 0 or an errno value. The caller must not start the child after a failure: the child would
    /// write to this program's own output.
    int redirect(const ChildProcessLaunch& launch)
    {
        if (const int error = posix_spawn_file_actions_adddup2(&value, launch.standardOutput, STDOUT_FILENO))
            return error;
        if (const int error = posix_spawn_file_actions_adddup2(&value, launch.standardError, STDERR_FILENO))
            return error;
        // Libraries in this process may hold descriptors that are not marked close-on-exec.
        return posix_spawn_file_actions_addclosefrom_np(&value, STDERR_FILENO + 1);
    }

    posix_spawn_file_actions_t value{};
};

struct Attributes {
    Attributes()
    {
        posix_spawnattr_init(&value);
        sigset_t signals;
        sigfillset(&signals);
        for (const int signal : endingSignals)
            if (isIgnored(signal))
                sigdelset(&signals, signal);
        posix_spawnattr_setsigdefault(&value, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&value, &signals);
        posix_spawnattr_setflags(&value, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~Attributes() { posix_spawnattr_destroy(&value); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    posix_spawnattr_t value{};
};

std::vector<char*> argumentVector(std::vector<std::string>& strings)
{
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& string : strings)
        pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

bool haveSameName(std::string_view variable, std::string_view other)
{
    return variable.substr(0, variable.find('=')) == other.substr(0, other.find('='));
}

/// The variables of this process and the additional ones, which replace those of the same names.
std::vector<char*> environmentVector(std::vector<std::string>& additional)
{
    std::vector<char*> pointers;
    for (char** inherited = environ; *inherited != nullptr; ++inherited) {
        const auto replaces = [&](const std::string& variable) { return haveSameName(variable, *inherited); };
        if (std::none_of(additional.begin(), additional.end(), replaces))
            pointers.push_back(*inherited);
    }
    for (char* variable : argumentVector(additional))
        pointers.push_back(variable);
    return pointers;
}

/// Blocks until the child has ended. Returns false when waiting fails, with the reason in errno.
bool waitFor(pid_t child, siginfo_t& info, int options)
{
    while (systemCalls().waitid(P_PID, static_cast<id_t>(child), &info, options) != 0)
        if (errno != EINTR)
            return false;
    return true;
}

} // namespace

std::shared_ptr<ChildProcess> ChildProcess::launch(const ChildProcessLaunch& launch)
{
    std::vector<std::string> strings = {launch.executable.string()};
    strings.insert(strings.end(), launch.arguments.begin(), launch.arguments.end());
    const std::vector<char*> arguments = argumentVector(strings);
    std::vector<std::string> additional = launch.environment;
    const std::vector<char*> environment = environmentVector(additional);
    FileActions actions;
    const Attributes attributes;
    if (const int error = actions.redirect(launch))
        throw SystemError(error, "start", launch.executable);

    if (!ChildRegistry::shared().isOpen())
        throw SystemError(ECANCELED, "start", launch.executable);
    pid_t pid = 0;
    const int error = systemCalls().posixSpawn(&pid, launch.executable.c_str(), &actions.value,
                                               &attributes.value, arguments.data(), environment.data());
    if (error != 0)
        throw SystemError(error, "start", launch.executable);
    auto child = std::shared_ptr<ChildProcess>(new ChildProcess(pid, launch.executable));
    if (!ChildRegistry::shared().add(pid))
        child->terminate();
    return child;
}

ChildProcess::ChildProcess(pid_t pid, std::filesystem::path executable)
    : m_pid(pid), m_executable(std::move(executable))
{
}

ChildProcess::~ChildProcess()
{
    // Remove the child from the registry before reaping it. After that, another process may get its id, and a
    // signal sent through the registry would reach that process.
    siginfo_t info{};
    waitFor(m_pid, info, WEXITED | WNOWAIT);
    ChildRegistry::shared().remove(m_pid);
    waitFor(m_pid, info, WEXITED);
}

int ChildProcess::waitForExit()
{
    siginfo_t info{};
    if (!waitFor(m_pid, info, WEXITED | WNOWAIT))
        throw SystemError(errno, "wait for", m_executable);
    // When a signal ended the child, si_status holds the signal's number.
    m_endedBySignal = info.si_code != CLD_EXITED;
    return info.si_status;
}

void ChildProcess::terminate() const
{
    systemCalls().kill(m_pid, SIGTERM);
}

void ChildProcess::kill() const
{
    systemCalls().kill(m_pid, SIGKILL);
}

} // namespace stackreel
