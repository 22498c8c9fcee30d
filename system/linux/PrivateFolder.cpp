#include "system/PrivateFolder.h"

#include "system/Files.h"
#include "system/SystemCalls.h"
#include "system/SystemError.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace stackreel
{

namespace
{

void create(const std::filesystem::path& path)
{
    Files::createDirectories(path.parent_path());
    if (systemCalls().mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        throw SystemError(errno, "create the folder", path);
}

int openFolder(const std::filesystem::path& path)
{
    const int descriptor =
        systemCalls().openat(AT_FDCWD, path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
    if (descriptor < 0)
        throw SystemError(errno, "open the folder", path);
    return descriptor;
}

/// Returns 0 or an errno value. EPERM means that the folder belongs to another user.
int makePrivate(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return errno;
    if (status.st_uid != ::geteuid())
        return EPERM;
    if ((status.st_mode & ALLPERMS) != S_IRWXU && ::fchmod(descriptor, S_IRWXU) != 0)
        return errno;
    return 0;
}

bool lock(int descriptor, int operation)
{
    while (::flock(descriptor, operation) != 0)
        if (errno != EINTR)
            return false;
    return true;
}

} // namespace

std::filesystem::path PrivateFolder::pathOfUser(const std::string& name)
{
    return Files::temporaryDirectory() / (name + "-" + std::to_string(::geteuid()));
}

PrivateFolder::PrivateFolder(const std::filesystem::path& path)
{
    create(path);
    m_descriptor = openFolder(path);
    if (const int error = makePrivate(m_descriptor)) {
        systemCalls().close(m_descriptor);
        throw SystemError(error, "use as a folder of yours", path);
    }
    // Without locks nothing is ever removed, as `lockExclusively` fails, too.
    lock(m_descriptor, LOCK_SH);
}

PrivateFolder::~PrivateFolder()
{
    systemCalls().close(m_descriptor);
}

bool PrivateFolder::lockExclusively() const
{
    if (lock(m_descriptor, LOCK_EX | LOCK_NB))
        return true;
    // A failed change gives up the shared lock.
    lock(m_descriptor, LOCK_SH);
    return false;
}

std::filesystem::path PrivateFolder::heldPath() const
{
    return "/proc/self/fd/" + std::to_string(m_descriptor);
}

} // namespace stackreel
