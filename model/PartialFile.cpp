#include "model/PartialFile.h"

#include "media/CancellationError.h"
#include "model/ExportError.h"
#include "system/Files.h"
#include "system/SystemError.h"

#include <QUuid>

#include <cerrno>
#include <optional>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

constexpr int maxUnfinished = 1000;

std::string hiddenName()
{
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    return ".stackreel-" + uuid.toStdString() + ".mp4";
}

std::string unfinishedName(const std::string& stem, int number, const fs::path& extension)
{
    const std::string counted = number > 1 ? " " + std::to_string(number) : "";
    return stem + " (unfinished" + counted + ")" + extension.string();
}

/// The permissions of a file; none where there is no file.
std::optional<fs::perms> permissionsOf(const fs::path& file)
{
    std::error_code error;
    const fs::file_status found = fs::status(file, error);
    if (!fs::is_regular_file(found))
        return std::nullopt;
    // Without the bits that run a program as another user.
    return found.permissions() & fs::perms::all;
}

} // namespace

PartialFile::PartialFile(const Destination& destination, Name name)
    : m_destination(destination), m_folder(destination.file.parent_path())
{
    const auto replaced = permissionsOf(destination.file);
    if (const int error = replaced ? m_folder.errorOnReplacing(destination.file.filename()) : 0; error != 0)
        throw SystemError(error, "replace", destination.named);
    const auto usual = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                       fs::perms::group_write | fs::perms::others_read | fs::perms::others_write;
    const fs::perms permissions =
        replaced ? *replaced | fs::perms::owner_read | fs::perms::owner_write : usual;
    if (name == Name::hidden)
        createFile(hiddenName(), permissions);
    // FFmpeg chooses the format by the extension, which the target of a link need not have.
    else if (replaced || destination.file.extension() != destination.named.extension() ||
             tryToCreate(destination.file.filename(), permissions) != 0)
        createUnfinished(permissions);
    m_path = destination.file.parent_path() / m_name;
    m_identity = m_file->identity();
    m_temporary.emplace(m_path, m_identity);
}

PartialFile::~PartialFile()
{
    if (!m_moved && (!m_kept || m_file->size() == 0))
        m_folder.remove(m_name, m_identity);
}

void PartialFile::keep()
{
    m_kept = true;
    m_temporary.reset();
}

/// Returns 0, or EEXIST or ENAMETOOLONG if there cannot be a file of this name.
int PartialFile::tryToCreate(const std::string& name, fs::perms permissions)
{
    const int error = m_folder.createNew(name, permissions, m_file);
    if (error != 0 && error != EEXIST && error != ENAMETOOLONG)
        throw SystemError(error, "write", m_destination.named);
    m_name = name;
    return error;
}

void PartialFile::createFile(const std::string& name, fs::perms permissions)
{
    if (const int error = tryToCreate(name, permissions); error != 0)
        throw SystemError(error, "write", m_destination.named);
}

void PartialFile::createUnfinished(fs::perms permissions)
{
    const fs::path extension = m_destination.named.extension();
    const std::string stem = m_destination.file.stem();
    // A long name may have no room for the addition.
    for (const std::string& base : {stem, std::string("Export")})
        for (int number = 1; number <= maxUnfinished; ++number)
            if (const int error = tryToCreate(unfinishedName(base, number, extension), permissions);
                error == 0)
                return;
            else if (error == ENAMETOOLONG)
                break;
    throw SystemError(EEXIST, "write", m_destination.named);
}

void PartialFile::requireInPlace() const
{
    if (!m_folder.isInPlace())
        throw ExportError("The folder “" + m_path.parent_path().string() +
                          "” was moved or removed during the export. Export again into another folder.");
    if (!m_folder.contains(m_name, m_identity))
        throw ExportError("“" + m_path.string() +
                          "” was removed or replaced by another program during the export. Export again.");
}

void PartialFile::moveIntoPlace(const std::stop_token& stop)
{
    m_file->synchronize();
    if (stop.stop_requested())
        throw CancellationError();
    if (const auto replaced = permissionsOf(m_destination.file); replaced && m_destination.replace)
        m_file->setPermissions(*replaced);
    // This is the last check before the rename: another program has as little time as possible to replace
    // the file.
    requireInPlace();
    if (m_path != m_destination.file) {
        try {
            m_folder.rename(m_name, m_destination.file.filename(), m_destination.replace);
        } catch (const SystemError& error) {
            if (error.code().value() == EEXIST)
                throw m_destination.alreadyExists();
            throw;
        }
    }
    m_moved = true;
    m_temporary.reset();
    m_folder.synchronize();
}

} // namespace stackreel
