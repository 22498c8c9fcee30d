#include "platform/UnusedFiles.h"

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

constexpr std::chrono::minutes minimumAge(1);

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

bool isUnused(const fs::path& path)
{
    const OpenFile file(path);
    struct stat found = {};
    if (file.descriptor < 0 || ::fstat(file.descriptor, &found) != 0)
        return false;
    // The system gives a write lease only for a file that nobody else has open. Whoever opens it before it is
    // closed here causes a signal; SIGIO would end this process, and SIGURG is ignored by default.
    return S_ISREG(found.st_mode) && isOldFileOfThisUser(found) &&
           ::fcntl(file.descriptor, F_SETSIG, SIGURG) == 0 &&
           ::fcntl(file.descriptor, F_SETLEASE, F_WRLCK) == 0;
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

/// Removes what is unused in the folder, and the folder if nothing else is in it.
void removeFolder(const fs::path& folder, const UnusedFiles::NameCheck& isFileName)
{
    if (entries(folder, isFileName).empty())
        return;
    UnusedFiles::remove(folder, isFileName);
    ::rmdir(folder.c_str());
}

} // namespace

void UnusedFiles::remove(const fs::path& folder, const NameCheck& isName) noexcept
{
    try {
        for (const fs::path& file : entries(folder, isName))
            if (isUnused(file))
                ::unlink(file.c_str());
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
