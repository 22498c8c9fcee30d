#include "ffmpeg-shim/Process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace stackreel::shim
{

namespace
{

// The argument vector for `posix_spawn` and `execv`. Its pointers are valid as long as `path` and
// `arguments`.
std::vector<char*> argumentVector(const std::string& path, const std::vector<std::string>& arguments)
{
    std::vector<char*> vector{const_cast<char*>(path.c_str())};
    for (const std::string& argument : arguments)
        vector.push_back(const_cast<char*>(argument.c_str()));
    vector.push_back(nullptr);
    return vector;
}

// Opens /dev/null and makes it the descriptor `number`.
void replaceByNothing(int number, int flags)
{
    const int opened = ::open("/dev/null", flags);
    if (opened == number)
        return;
    ::dup2(opened, number);
    ::close(opened);
}

// Runs in the new child before the program starts. The kernel kills the child when this process ends: a
// signal may end this process at any time, and the child would otherwise continue to run. The pipe is
// duplicated first: if this process was started with a standard stream closed, the pipe may have the
// descriptor of that stream.
[[noreturn]] void runChild(const char* path, char* const* arguments, int output, pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(notStartedStatus); // the parent ended before the call
    if (output == STDOUT_FILENO)
        ::fcntl(output, F_SETFD, 0);
    else
        ::dup2(output, STDOUT_FILENO);
    replaceByNothing(STDIN_FILENO, O_RDONLY);
    replaceByNothing(STDERR_FILENO, O_WRONLY);
    ::execv(path, arguments);
    ::_exit(notStartedStatus);
}

// Starts the program with `output` as its standard output. Returns its process id, or a negative number if
// that fails.
pid_t start(const std::string& path, const std::vector<std::string>& arguments, int output)
{
    const std::vector<char*> vector = argumentVector(path, arguments);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0)
        runChild(path.c_str(), vector.data(), output, parent);
    return child;
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

// Whether the child has exited with status 0. If this process ignores SIGCHLD, the system reaps the child and
// its status is lost. In this case the function returns true, so that the output of the child is used.
bool exitedSuccessfully(pid_t child)
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
    const pid_t child = start(path, arguments, pipe[1]);
    const bool started = child > 0;
    ::close(pipe[1]);
    const std::string output = started ? readToEnd(pipe[0]) : std::string();
    ::close(pipe[0]);
    if (!started || !exitedSuccessfully(child))
        return std::nullopt;
    return output;
}

int execProgram(const std::string& path, const std::vector<std::string>& arguments)
{
    const std::vector<char*> vector = argumentVector(path, arguments);
    ::execv(path.c_str(), vector.data());
    return fail(notStartedStatus, path + " could not be started: " + std::strerror(errno));
}

int failMissing(std::string_view tool)
{
    return fail(notFoundStatus, std::string(tool) + " is missing. Build the bundled media tools first.");
}

void writeError(std::string_view message)
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
}

int fail(int status, std::string_view message)
{
    writeError(message);
    return status;
}

} // namespace stackreel::shim
