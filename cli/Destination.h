#pragma once

#include <filesystem>

namespace stackreel
{

/// Where an export goes.
struct Destination {
    std::filesystem::path named; ///< absolute; as the user named it
    std::filesystem::path file;  ///< absolute; the file that is written, behind any symbolic links
    bool replace = false;        ///< whether a file that is there may be replaced

    /// Looks at the destination before anything is rendered; `source` and `destination` are absolute.
    ///
    /// Throws `CliError` when the destination exists and must not be replaced, is a folder or another thing
    /// that is no file, has no folder to be in, or is the source itself under whatever name; `SystemError`
    /// when it cannot be looked at or written.
    static Destination check(const std::filesystem::path& source, const std::filesystem::path& destination,
                             bool overwrite);

    /// Throws `CliError` when both paths lead to the same existing file.
    static void requireOther(const std::filesystem::path& source, const std::filesystem::path& destination);
};

/// The file an export is rendered into until it is known to be good: a hidden one beside its destination, so
/// that moving it there takes one step. Removed with the object unless it was moved.
class PartialFile
{
public:
    /// Chooses the name, and makes sure that a file can be written there. Throws `SystemError`, naming the
    /// destination, when not. There is no file when it returns.
    explicit PartialFile(const Destination& destination);
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    /// Makes the file safe on disk and gives it the destination's name. Throws `CliError` when a file that
    /// must not be replaced has appeared there meanwhile, `SystemError` when it cannot be done.
    void moveIntoPlace() const;

private:
    Destination m_destination;
    std::filesystem::path m_path;
};

} // namespace stackreel
