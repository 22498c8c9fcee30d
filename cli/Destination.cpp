#include "cli/Destination.h"

#include "cli/CliError.h"
#include "platform/Files.h"
#include "platform/SystemError.h"

#include <QUuid>

#include <cerrno>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

constexpr int maxLinks = 40;

std::string quoted(const fs::path& path)
{
    return "“" + path.string() + "”";
}

CliError alreadyExists(const fs::path& path)
{
    return CliError(quoted(path) + " already exists. Replace it with --overwrite.");
}

/// The result of `query` for the path. A missing file is not an error.
template <typename Query>
fs::file_status statusOf(const fs::path& path, Query query)
{
    std::error_code error;
    const fs::file_status status = query(path, error);
    if (status.type() == fs::file_type::none)
        throw SystemError(error.value(), "look at", path);
    return status;
}

fs::file_status targetStatus(const fs::path& path)
{
    return statusOf(path,
                    [](const fs::path& file, std::error_code& error) { return fs::status(file, error); });
}

fs::file_status linkStatus(const fs::path& path)
{
    return statusOf(
        path, [](const fs::path& file, std::error_code& error) { return fs::symlink_status(file, error); });
}

/// The file that a write to the path would create or change: symbolic links are followed, also to a file that
/// does not exist yet.
fs::path followLinks(fs::path path)
{
    for (int links = 0; fs::is_symlink(linkStatus(path)); ++links) {
        if (links == maxLinks)
            throw SystemError(ELOOP, "write", path);
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
}

void requireFolderFor(const fs::path& file)
{
    const fs::path folder = file.parent_path();
    const fs::file_status found = targetStatus(folder);
    if (!fs::exists(found))
        throw CliError("The folder " + quoted(folder) + " does not exist.");
    if (!fs::is_directory(found))
        throw CliError(quoted(folder) + " is not a folder.");
}

} // namespace

void Destination::requireOther(const fs::path& source, const fs::path& destination)
{
    // The error is ignored: the comparison reports one if the destination does not exist yet.
    std::error_code error;
    if (fs::equivalent(source, destination, error) && !error)
        throw CliError(quoted(destination) + " is the source itself, which is never overwritten.");
}

Destination Destination::check(const fs::path& source, const fs::path& destination, bool overwrite)
{
    requireOther(source, destination);
    const fs::file_status found = targetStatus(destination);
    if (fs::is_directory(found))
        throw CliError(quoted(destination) + " is a folder. Name the file to write.");
    if (fs::exists(found) && !fs::is_regular_file(found))
        throw CliError(quoted(destination) + " is not a regular file.");
    if (!overwrite && fs::exists(linkStatus(destination)))
        throw alreadyExists(destination);
    const fs::path file = followLinks(destination);
    requireFolderFor(file);
    return {.named = destination, .file = file, .replace = overwrite};
}

PartialFile::PartialFile(const Destination& destination) : m_destination(destination)
{
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    m_path = destination.file.parent_path() / (".stackreel-" + uuid.toStdString() + ".mp4");
    if (const int error = Files::createEmpty(m_path); error != 0)
        throw SystemError(error, "write", destination.named);
    // Remove the file that was created to test the folder. The encoder creates it again, with the user's
    // default permissions.
    fs::remove(m_path);
}

PartialFile::~PartialFile()
{
    std::error_code ignored;
    fs::remove(m_path, ignored);
}

void PartialFile::moveIntoPlace() const
{
    WriteHandle(m_path).synchronize();
    try {
        Files::moveIntoPlace(m_path, m_destination.file, m_destination.replace);
    } catch (const SystemError& error) {
        if (error.code().value() == EEXIST)
            throw alreadyExists(m_destination.named);
        throw;
    }
}

} // namespace stackreel
