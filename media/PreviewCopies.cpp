#include "media/PreviewCopies.h"

#include "system/CleanupProcess.h"
#include "system/Files.h"
#include "system/Folder.h"
#include "system/PrivateFolder.h"
#include "system/SystemError.h"

#include <QUuid>

#include <memory>
#include <mutex>
#include <optional>
#include <system_error>

namespace stackreel
{

namespace
{

constexpr const char* extension = ".mp4";

std::filesystem::path folderPath()
{
    return PrivateFolder::pathOfUser("Stackreel");
}

/// Keeps the folder open until the process ends, or until another one takes its place.
void keepOpen(std::unique_ptr<PrivateFolder> folder)
{
    static std::mutex lock;
    static std::unique_ptr<PrivateFolder> kept;
    const std::lock_guard guard(lock);
    kept.swap(folder);
}

std::string newUuid()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
}

/// A new private folder with a random name. `CleanupProcess` removes it after the end of the program.
struct FolderOfThisRun {
    FolderOfThisRun() : path(folderPath().string() + "-" + newUuid()), temporary(path)
    {
        Files::createPrivateDirectory(path);
        held.emplace(path);
    }

    std::filesystem::path path;
    TemporaryPath temporary;
    std::optional<Folder> held;
};

/// The path of the folder of this run. A new one is made if another program, such as a cleaner of the
/// temporary directory, has removed it.
std::filesystem::path folderOfThisRun()
{
    static std::mutex lock;
    static auto& current = *new std::unique_ptr<FolderOfThisRun>; // never destroyed
    const std::lock_guard guard(lock);
    if (current == nullptr || !current->held->isInPlace())
        current = std::make_unique<FolderOfThisRun>();
    return current->path;
}

std::filesystem::path openFolder()
{
    auto path = folderPath();
    try {
        keepOpen(std::make_unique<PrivateFolder>(path));
        return path;
    } catch (const SystemError&) {
        // Another user may have created something by that name, which this user cannot remove.
        return folderOfThisRun();
    }
}

void removeCopies(const std::filesystem::path& folder)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == extension)
            std::filesystem::remove(entry.path(), ignored);
}

} // namespace

std::filesystem::path PreviewCopies::newFile()
{
    return openFolder() / (newUuid() + extension);
}

void PreviewCopies::removeUnused() noexcept
{
    try {
        const auto path = folderPath();
        if (!std::filesystem::exists(path))
            return;
        const PrivateFolder folder(path);
        if (folder.lockExclusively())
            removeCopies(folder.heldPath());
    } catch (const std::exception&) {
        // A later start tries again; a new copy reports what is wrong with the folder.
    }
}

} // namespace stackreel
