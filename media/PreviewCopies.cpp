#include "media/PreviewCopies.h"

#include "media/ScratchDirectory.h"
#include "platform/PrivateFolder.h"
#include "platform/SystemError.h"

#include <QUuid>

#include <memory>
#include <mutex>
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

/// A folder with a random name. It is never destroyed: `CleanupProcess` removes it after the end of the
/// program.
const ScratchDirectory& folderOfThisRun()
{
    static const auto& folder = *new ScratchDirectory;
    return folder;
}

std::filesystem::path openFolder()
{
    const auto path = folderPath();
    try {
        keepOpen(std::make_unique<PrivateFolder>(path));
        return path;
    } catch (const SystemError&) {
        // Another user may have created something by that name, which this user cannot remove.
        return folderOfThisRun().path();
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
    const auto folder = openFolder();
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    return folder / (uuid.toStdString() + extension);
}

void PreviewCopies::removeUnused() noexcept
{
    try {
        const auto path = folderPath();
        if (!std::filesystem::exists(path))
            return;
        const PrivateFolder folder(path);
        if (folder.lockExclusively())
            removeCopies(path);
    } catch (const std::exception&) {
        // A later start tries again; a new copy reports what is wrong with the folder.
    }
}

} // namespace stackreel
