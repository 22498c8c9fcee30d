#include "model/Destination.h"

#include "system/SystemError.h"

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

/// Compares the files themselves, not their names. Rendering onto the source would destroy it before it is
/// read.
void requireOther(const fs::path& source, const fs::path& destination)
{
    // The comparison reports an error for a destination that does not exist yet.
    std::error_code error;
    if (fs::equivalent(source, destination, error) && !error)
        throw ExportError(quoted(destination) + " is the source itself, which is never overwritten.");
}

void requireFolderFor(const fs::path& file)
{
    const fs::path folder = file.parent_path();
    const fs::file_status found = targetStatus(folder);
    if (!fs::exists(found))
        throw ExportError("The folder " + quoted(folder) + " does not exist.");
    if (!fs::is_directory(found))
        throw ExportError(quoted(folder) + " is not a folder.");
}

} // namespace

ExportError Destination::alreadyExists() const
{
    return ExportError(quoted(named) + " already exists. Replace it with --overwrite.");
}

Destination Destination::check(const fs::path& source, const fs::path& destination, bool overwrite)
{
    requireOther(source, destination);
    const fs::file_status found = targetStatus(destination);
    if (fs::is_directory(found))
        throw ExportError(quoted(destination) + " is a folder. Name the file to write.");
    if (fs::exists(found) && !fs::is_regular_file(found))
        throw ExportError(quoted(destination) + " is not a regular file.");
    Destination checked = {.named = destination, .file = followLinks(destination), .replace = overwrite};
    if (!overwrite && fs::exists(linkStatus(destination)))
        throw checked.alreadyExists();
    requireFolderFor(checked.file);
    return checked;
}

} // namespace stackreel
