#include "platform/Files.h"

#include "platform/SystemCalls.h"
#include "platform/SystemError.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace stackreel
{

namespace
{

// In a process that was started with a standard stream closed, the next file that is opened gets the
// descriptor of that stream, and a child would inherit it, for example as its standard input. Duplicating the
// descriptor to a higher number avoids that.
int aboveStandardDescriptors(int descriptor)
{
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    const int moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    systemCalls().close(descriptor);
    errno = error;
    return moved;
}

int openCloseOnExec(const std::filesystem::path& path, int flags)
{
    int descriptor = -1;
    do
        descriptor = systemCalls().open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR);
    while (descriptor < 0 && errno == EINTR);
    return aboveStandardDescriptors(descriptor);
}

struct ReadHandle {
    explicit ReadHandle(const std::filesystem::path& path) : descriptor(openCloseOnExec(path, O_RDONLY))
    {
        if (descriptor < 0)
            throw SystemError(errno, "open", path);
    }
    ~ReadHandle() { systemCalls().close(descriptor); }
    ReadHandle(const ReadHandle&) = delete;
    ReadHandle& operator=(const ReadHandle&) = delete;

    int descriptor;
};

} // namespace

WriteHandle::WriteHandle(const std::filesystem::path& path)
    : m_path(path), m_descriptor(openCloseOnExec(path, O_WRONLY))
{
    if (m_descriptor < 0)
        throw SystemError(errno, "open", path);
}

WriteHandle::~WriteHandle()
{
    systemCalls().close(m_descriptor);
}

void WriteHandle::synchronize() const
{
    if (systemCalls().fsync(m_descriptor) != 0)
        throw SystemError(errno, "write", m_path);
}

std::filesystem::path Files::temporaryDirectory()
{
    const char* chosen = std::getenv("TMPDIR");
    if (chosen == nullptr || *chosen == '\0')
        return "/tmp";
    return std::filesystem::absolute(chosen);
}

void Files::createDirectories(const std::filesystem::path& path)
{
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        return;
    // A path of a single name has no parent to create, because it is in the working directory.
    if (path.has_relative_path() && path.has_parent_path())
        createDirectories(path.parent_path());
    if (systemCalls().mkdir(path.c_str(), S_IRWXU | S_IRWXG | S_IRWXO) == 0)
        return;
    const int reason = errno;
    // Another process may have created the folder in the meantime.
    if (reason != EEXIST || !std::filesystem::is_directory(path, error))
        throw SystemError(reason, "create the folder", path);
}

void Files::createPrivateDirectory(const std::filesystem::path& path)
{
    if (path.has_parent_path())
        createDirectories(path.parent_path());
    if (systemCalls().mkdir(path.c_str(), S_IRWXU) != 0)
        throw SystemError(errno, "create the folder", path);
}

int Files::createEmpty(const std::filesystem::path& path)
{
    const int descriptor = openCloseOnExec(path, O_WRONLY | O_CREAT);
    if (descriptor < 0)
        return errno;
    systemCalls().close(descriptor);
    return 0;
}

std::string Files::readAll(const std::filesystem::path& path)
{
    const ReadHandle handle(path);
    std::string content;
    std::array<char, 64 * 1024> block{};
    while (true) {
        const ssize_t count = systemCalls().read(handle.descriptor, block.data(), block.size());
        if (count == 0)
            return content;
        if (count > 0)
            content.append(block.data(), static_cast<size_t>(count));
        else if (errno != EINTR)
            throw SystemError(errno, "read", path);
    }
}

bool Files::isExecutable(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

void Files::moveIntoPlace(const std::filesystem::path& from, const std::filesystem::path& to, bool replace)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), replace ? 0U : RENAME_NOREPLACE) == 0)
        return;
    // Some network and FUSE file systems do not support RENAME_NOREPLACE. On these, check first and then
    // rename, which is not atomic.
    if (errno == EINVAL && !replace) {
        std::error_code error;
        if (std::filesystem::exists(std::filesystem::symlink_status(to, error)))
            throw SystemError(EEXIST, "write", to);
        if (::rename(from.c_str(), to.c_str()) == 0)
            return;
    }
    throw SystemError(errno, "write", to);
}

} // namespace stackreel
