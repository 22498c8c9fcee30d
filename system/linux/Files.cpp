#include "system/Files.h"

#include "system/SystemCalls.h"
#include "system/SystemError.h"
#include "system/linux/Descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace stackreel
{

namespace
{

struct ReadHandle {
    explicit ReadHandle(const std::filesystem::path& path)
        : descriptor(openCloseOnExec(AT_FDCWD, path, O_RDONLY))
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
    : m_path(path), m_descriptor(openCloseOnExec(AT_FDCWD, path, O_WRONLY))
{
    if (m_descriptor < 0)
        throw SystemError(errno, "open", path);
}

WriteHandle::WriteHandle(const std::filesystem::path& path, int descriptor)
    : m_path(path), m_descriptor(descriptor)
{
}

WriteHandle::~WriteHandle()
{
    systemCalls().close(m_descriptor);
}

FileIdentity WriteHandle::identity() const
{
    struct stat found = {};
    if (::fstat(m_descriptor, &found) != 0)
        throw SystemError(errno, "look at", m_path);
    return {.device = found.st_dev, .inode = found.st_ino};
}

std::uintmax_t WriteHandle::size() const noexcept
{
    struct stat found = {};
    return ::fstat(m_descriptor, &found) == 0 ? static_cast<std::uintmax_t>(found.st_size) : 0;
}

void WriteHandle::setPermissions(std::filesystem::perms permissions) const noexcept
{
    ::fchmod(m_descriptor, static_cast<mode_t>(permissions));
}

void WriteHandle::synchronize() const
{
    if (systemCalls().fsync(m_descriptor) != 0)
        throw SystemError(errno, "write", m_path);
}

bool WriteHandle::isDiskFull() const noexcept
{
    struct stat found = {};
    if (::fstat(m_descriptor, &found) != 0)
        return false;
    // The last block of the file may have room left; the next one is new.
    const off_t block = 65536;
    const off_t next = (found.st_size / block + 1) * block;
    return systemCalls().fallocate(m_descriptor, FALLOC_FL_KEEP_SIZE, next, 1) != 0 &&
           (errno == ENOSPC || errno == EDQUOT);
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
    const int descriptor = openCloseOnExec(AT_FDCWD, path, O_WRONLY | O_CREAT);
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

} // namespace stackreel
