#include "system/Folder.h"

#include "system/SystemCalls.h"
#include "system/SystemError.h"
#include "system/linux/Descriptors.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace stackreel
{

namespace
{

int openFolder(const std::filesystem::path& path)
{
    const int descriptor = openCloseOnExec(AT_FDCWD, path, O_RDONLY | O_DIRECTORY);
    if (descriptor >= 0 || errno != EACCES)
        return descriptor;
    // Files can be created in a folder that cannot be listed. Such a folder cannot be synchronised.
    return openCloseOnExec(AT_FDCWD, path, O_PATH | O_DIRECTORY);
}

} // namespace

Folder::Folder(const std::filesystem::path& path) : m_path(path), m_descriptor(openFolder(path))
{
    if (m_descriptor < 0)
        throw SystemError(errno, "open the folder", path);
}

Folder::~Folder()
{
    systemCalls().close(m_descriptor);
}

int Folder::createNew(const std::string& name, std::filesystem::perms permissions,
                      std::optional<WriteHandle>& file) const
{
    const int descriptor =
        openCloseOnExec(m_descriptor, name, O_WRONLY | O_CREAT | O_EXCL, static_cast<mode_t>(permissions));
    if (descriptor < 0)
        return errno;
    file.emplace(m_path / name, descriptor);
    return 0;
}

bool Folder::contains(const std::string& name, FileIdentity file) const
{
    struct stat found = {};
    if (systemCalls().fstatat(m_descriptor, name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0)
        return file == FileIdentity{.device = found.st_dev, .inode = found.st_ino};
    if (errno == ENOENT)
        return false;
    throw SystemError(errno, "look at", m_path / name);
}

void Folder::remove(const std::string& name, FileIdentity file) const noexcept
{
    try {
        if (contains(name, file))
            ::unlinkat(m_descriptor, name.c_str(), 0);
    } catch (const SystemError&) {
        // Ignored, as the header says.
    }
}

int Folder::errorOnReplacing(const std::string& name) const noexcept
{
    struct stat found = {};
    if (systemCalls().fstatat(m_descriptor, name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISDIR(found.st_mode))
        return EISDIR;
    // This call removes folders only. For a file that may be removed or replaced it fails with ENOTDIR, and
    // for another one with the reason.
    const int result = ::unlinkat(m_descriptor, name.c_str(), AT_REMOVEDIR);
    return result == 0 || errno == ENOTDIR || errno == ENOENT ? 0 : errno;
}

void Folder::rename(const std::string& from, const std::string& to, bool replace) const
{
    const auto flags = replace ? 0U : RENAME_NOREPLACE;
    if (::renameat2(m_descriptor, from.c_str(), m_descriptor, to.c_str(), flags) == 0)
        return;
    // Some network and FUSE file systems do not support RENAME_NOREPLACE. There the check comes first, which
    // is not atomic.
    if (errno == EINVAL && !replace) {
        if (::faccessat(m_descriptor, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
            throw SystemError(EEXIST, "write", m_path / to);
        if (errno == ENOENT && ::renameat(m_descriptor, from.c_str(), m_descriptor, to.c_str()) == 0)
            return;
    }
    throw SystemError(errno, "write", m_path / to);
}

void Folder::synchronize() const noexcept
{
    systemCalls().fsync(m_descriptor);
}

bool Folder::isInPlace() const noexcept
{
    struct stat held = {};
    struct stat found = {};
    return ::fstat(m_descriptor, &held) == 0 && ::stat(m_path.c_str(), &found) == 0 &&
           held.st_dev == found.st_dev && held.st_ino == found.st_ino;
}

} // namespace stackreel
