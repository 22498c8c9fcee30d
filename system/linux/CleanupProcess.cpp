#include "system/CleanupProcess.h"

#include <climits>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <mutex>
#include <new>
#include <system_error>

namespace stackreel
{

namespace
{

/// How long to wait for the end of a child that was killed.
constexpr int millisecondsToEnd = 1000;

/// In memory that both processes share. This process writes it, the other one reads it after this one has
/// ended. Entries beyond the capacity are not cleaned up.
struct Table {
    struct Path {
        std::atomic<bool> used = false;
        std::optional<FileIdentity> file; ///< none for a folder
        std::array<char, PATH_MAX> name{};
    };

    std::array<std::atomic<pid_t>, 64> children{};
    std::array<Path, 64> paths{};
};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<pid_t>::is_always_lock_free);

Table* table = nullptr;

std::mutex& mutex()
{
    // Never destroyed: threads may still use it while the program ends.
    static auto& guard = *new std::mutex;
    return guard;
}

Table* makeTable()
{
    void* const memory =
        ::mmap(nullptr, sizeof(Table), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : new (memory) Table;
}

/// Leaves the terminal, the working directory and all descriptors but `lifeline`, which becomes descriptor 0.
void detach(int lifeline)
{
    sigset_t all;
    sigfillset(&all);
    ::sigprocmask(SIG_BLOCK, &all, nullptr);
    ::prctl(PR_SET_NAME, "stackreel-clean");
    ::setsid();
    std::error_code ignored;
    std::filesystem::current_path("/", ignored);
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(lifeline, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    ::closefrom(STDERR_FILENO + 1);
}

/// The other end of the pipe is closed when the process that holds it has ended. Returns false when waiting
/// fails.
bool waitForEnd()
{
    while (true) {
        char none = 0;
        const ssize_t count = ::read(STDIN_FILENO, &none, 1);
        if (count == 0 || errno != EINTR)
            return count == 0;
    }
}

/// Kills a child and waits up to a second for its end, so that it does not write files during the clean-up.
/// Children stay in the program's process group. A process of another group has reused the id.
void killChild(pid_t child, pid_t group)
{
    if (::getpgid(child) != group)
        return;
    // A pidfd also reports the end of a zombie. Old kernels and some sandboxes do not offer it.
    const int handle = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
    ::kill(child, SIGKILL);
    if (handle < 0) {
        for (int waited = 0; waited < millisecondsToEnd && ::kill(child, 0) == 0; waited += 5)
            ::poll(nullptr, 0, 5);
        return;
    }
    pollfd end = {.fd = handle, .events = POLLIN, .revents = 0};
    ::poll(&end, 1, millisecondsToEnd);
    ::close(handle);
}

void remove(const Table::Path& path)
{
    std::error_code ignored;
    struct stat found = {};
    if (!path.file)
        std::filesystem::remove_all(path.name.data(), ignored);
    else if (::lstat(path.name.data(), &found) == 0 &&
             path.file == FileIdentity{.device = found.st_dev, .inode = found.st_ino})
        ::unlink(path.name.data());
}

[[noreturn]] void cleanUpAfterTheEnd(int lifeline)
{
    const pid_t group = ::getpgrp();
    detach(lifeline);
    if (!waitForEnd())
        ::_exit(EXIT_FAILURE);
    for (const auto& child : table->children)
        if (child != 0)
            killChild(child, group);
    for (const auto& path : table->paths)
        if (path.used)
            remove(path);
    ::_exit(EXIT_SUCCESS);
}

void replaceChild(pid_t before, pid_t after)
{
    if (table == nullptr)
        return;
    const std::lock_guard lock(mutex());
    const auto found = std::find(table->children.begin(), table->children.end(), before);
    if (found != table->children.end())
        *found = after;
}

} // namespace

void CleanupProcess::start()
{
    std::array<int, 2> ends{};
    table = makeTable();
    if (table == nullptr || ::pipe2(ends.data(), O_CLOEXEC) != 0)
        return;
    if (::fork() == 0)
        cleanUpAfterTheEnd(ends[0]);
    ::close(ends[0]); // the other end stays open for as long as this process exists
}

void CleanupProcess::addChild(pid_t child)
{
    replaceChild(0, child);
}

void CleanupProcess::removeChild(pid_t child)
{
    replaceChild(child, 0);
}

TemporaryPath::TemporaryPath(const std::filesystem::path& path, std::optional<FileIdentity> file)
{
    const std::string& name = path.native();
    if (table == nullptr || name.size() >= PATH_MAX)
        return;
    const std::lock_guard lock(mutex());
    const auto free = std::find_if(table->paths.begin(), table->paths.end(),
                                   [](const Table::Path& entry) { return !entry.used; });
    if (free == table->paths.end())
        return;
    std::memcpy(free->name.data(), name.c_str(), name.size() + 1);
    free->file = file;
    free->used = true;
    m_used = &free->used;
}

TemporaryPath::~TemporaryPath()
{
    if (m_used != nullptr)
        *m_used = false;
}

} // namespace stackreel
