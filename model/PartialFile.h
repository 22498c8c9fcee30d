#pragma once

#include "model/Destination.h"
#include "system/CleanupProcess.h"
#include "system/Folder.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>

namespace stackreel
{

/// The file that an export is written to until it is whole and verified. It lies beside its destination, so
/// that one rename moves it there. The destructor removes it unless it was moved or kept.
///
/// It holds the folder open and so reaches the file even after the folder was renamed. It holds the file open
/// and so can tell it from a file that another program has put in its place, which is neither moved nor
/// removed. Any thread, one at a time.
class PartialFile
{
public:
    enum class Name {
        hidden, ///< ".stackreel-", a random UUID, ".mp4"
        /// The destination's own; with " (unfinished)" when a file has that name, or when the destination is
        /// a link whose target has another extension. A name that is too long becomes "Export (unfinished)".
        visible
    };

    /// Chooses the name and creates an empty file. A file that will replace another has the other's
    /// permissions and is writable. Throws `SystemError`, naming the destination, when no file can be created
    /// there or when the system does not let this user replace the existing one.
    PartialFile(const Destination& destination, Name name);
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    /// Leaves the file where it is when this object is destroyed, unless it is empty.
    void keep();
    /// Throws `ExportError` when `path` no longer leads to the file, or when its folder cannot be examined.
    /// Throws `SystemError` when the file cannot be examined.
    void requireInPlace() const;
    /// Writes the file through to disk, which takes seconds for a large one; gives it the permissions of the
    /// file that it replaces; and renames it to the destination, whose folder is then written to disk, too.
    /// Throws `CancellationError` when the token fires before the file is renamed; what `requireInPlace`
    /// throws; `ExportError` when a file that must not be replaced has appeared meanwhile; `SystemError` when
    /// the system refuses. The destination is unchanged then.
    void moveIntoPlace(const std::stop_token& stop = {});

private:
    void createFile(const std::string& name, std::filesystem::perms permissions);
    void createUnfinished(std::filesystem::perms permissions);
    int tryToCreate(const std::string& name, std::filesystem::perms permissions);

    Destination m_destination;
    Folder m_folder;
    std::string m_name;
    std::filesystem::path m_path;
    std::optional<WriteHandle> m_file;
    FileIdentity m_identity;
    std::optional<TemporaryPath> m_temporary;
    bool m_kept = false;
    bool m_moved = false;
};

} // namespace stackreel
