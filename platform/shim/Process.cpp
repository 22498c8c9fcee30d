#include "platform/shim/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace stackreel::shim
{

namespace
{

// The argument vector that the system calls want, pointing into `path` and `arguments`.
std::vector<char*> argumentVector(const std::string& path, const std::vector<std::string>& arguments)
{
    std::vector<char*> vector{const_cast<char*>(path.c_str())};
    for (const std::string& argument : arguments)
        vector.push_back(const_cast<char*>(argument.c_str()));
    vector.push_back(nullptr);
    return vector;
}

// Starts the program with `output` as its standard output. The order matters where this process was started
// with a standard descriptor closed and the pipe took its number: the pipe is put in place before the others
// are opened.
bool start(const std::string& path, const std::vector<std::string>& arguments, int output, pid_t& child)
{
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0)
        return false;
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const std::vector<char*> vector = argumentVector(path, arguments);
    const int error = posix_spawn(&child, path.c_str(), &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0;
}

std::string readToEnd(int descriptor)
{
    std::string text;
    std::array<char, 16384> block{};
    while (true) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return text;
        text.append(block.data(), static_cast<std::size_t>(count));
    }
}

// Where this process ignores SIGCHLD, the system reaps its children and keeps no status;
// what the child wrote is then all there is to go by.
bool endedWell(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return errno == ECHILD;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::optional<std::string> outputOf(const std::string& path, const std::vector<std::string>& arguments)
{
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    pid_t child = 0;
    const bool started = start(path, arguments, pipe[1], child);
    ::close(pipe[1]);
    const std::string output = started ? readToEnd(pipe[0]) : std::string();
    ::close(pipe[0]);
    if (!started || !endedWell(child))
        return std::nullopt;
    return output;
}

int become(const std::string& path, const std::vector<std::string>& arguments)
{
    const std::vector<char*> vector = argumentVector(path, arguments);
    ::execv(path.c_str(), vector.data());
    return fail(notStartedStatus, path + " could not be started: " + std::strerror(errno));
}

int fail(int status, std::string_view message)
{
    const std::string line = std::string(message) + '\n';
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t count = ::write(STDERR_FILENO, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return status;
}

} // namespace stackreel::shim
