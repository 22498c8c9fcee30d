#include "system/UnusedFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <exception>
#include <vector>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

constexpr std::chrono::hours minimumAge(24);

/// A descriptor that is closed at the end; negative when the file could not be opened.
struct OpenFile {
    // Without O_NONBLOCK it would wait for another program's lease or pipe.
    explicit OpenFile(const fs::path& path)
        : descriptor(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~OpenFile()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int descriptor;
};

bool isOldFileOfThisUser(const struct stat& found)
{
    const auto changed = std::chrono::system_clock::from_time_t(found.st_mtime);
    return found.st_uid == ::geteuid() && std::chrono::system_clock::now() - changed >= minimumAge;
}

/// Whether the system grants a write lease, which it does only for a file that nobody else has open. Opening
/// the file then waits until the lease ends, and sends a signal: SIGIO would end this process, and SIGURG is
/// ignored by default.
bool leaseFile(const OpenFile& file)
{
    return ::fcntl(file.descriptor, F_SETSIG, SIGURG) == 0 &&
           ::fcntl(file.descriptor, F_SETLEASE, F_WRLCK) == 0;
}

void removeIfUnused(const fs::path& path)
{
    const OpenFile file(path);
    struct stat found = {};
    if (file.descriptor < 0 || ::fstat(file.descriptor, &found) != 0)
        return;
    if (S_ISREG(found.st_mode) && isOldFileOfThisUser(found) && leaseFile(file))
        ::unlink(path.c_str());
}

bool isUnusedFolder(const fs::path& path)
{
    struct stat found = {};
    return ::lstat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && isOldFileOfThisUser(found);
}

std::vector<fs::path> entries(const fs::path& folder, const UnusedFiles::NameCheck& isName)
{
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder))
        if (isName(entry.path().filename()))
            found.push_back(entry.path());
    return found;
}

/// Removes the unused files, and the folder if it is then empty. Does nothing if the folder has no such file.
void removeFolder(const fs::path& folder, const UnusedFiles::NameCheck& isFileName)
{
    try {
        if (entries(folder, isFileName).empty())
            return;
    } catch (const fs::filesystem_error&) {
        return; // it cannot be listed
    }
    UnusedFiles::remove(folder, isFileName);
    ::rmdir(folder.c_str());
}

} // namespace

void UnusedFiles::remove(const fs::path& folder, const NameCheck& isName) noexcept
{
    try {
        for (const fs::path& file : entries(folder, isName))
            removeIfUnused(file);
    } catch (const std::exception&) {
        // The folder cannot be listed.
    }
}

void UnusedFiles::removeFolders(const fs::path& parent, const NameCheck& isName,
                                const NameCheck& isFileName) noexcept
{
    try {
        for (const fs::path& folder : entries(parent, isName))
            if (isUnusedFolder(folder))
                removeFolder(folder, isFileName);
    } catch (const std::exception&) {
        // The folder cannot be listed.
    }
}

} // namespace stackreel
