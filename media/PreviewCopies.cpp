#include "media/PreviewCopies.h"

#include "platform/PrivateFolder.h"

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
    const auto path = folderPath();
    keepOpen(std::make_unique<PrivateFolder>(path));
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    return path / (uuid.toStdString() + extension);
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
