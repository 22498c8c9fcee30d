#pragma once

#include <filesystem>

namespace stackreel
{

/// The file that an export is written to.
struct Destination {
    std::filesystem::path named; ///< absolute; as the user named it
    std::filesystem::path file;  ///< absolute; the file to write, with symbolic links resolved
    bool replace = false;        ///< whether an existing file may be replaced

    /// Checks the destination before anything is rendered; `source` and `destination` are absolute.
    ///
    /// Throws `CliError` when the destination exists and must not be replaced, is not a regular file, is in
    /// a folder that does not exist, or is the source itself, also under another name. Throws `SystemError`
    /// when the destination cannot be examined.
    static Destination check(const std::filesystem::path& source, const std::filesystem::path& destination,
                             bool overwrite);

    /// Throws `CliError` when both paths name the same existing file.
    static void requireOther(const std::filesystem::path& source, const std::filesystem::path& destination);
};

/// The hidden file that an export is rendered into. After the file is checked, it is renamed to the
/// destination, which is in the same folder. The destructor removes the file if it was not renamed.
class PartialFile
{
public:
    /// Chooses the name and checks that a file can be created there. Throws `SystemError`, naming the
    /// destination, when it cannot. The file does not exist yet when this returns.
    explicit PartialFile(const Destination& destination);
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    /// Writes the file through to disk and renames it to the destination. Throws `CliError` when a file that
    /// must not be replaced has appeared there in the meantime, and `SystemError` when the rename fails.
    void moveIntoPlace() const;

private:
    Destination m_destination;
    std::filesystem::path m_path;
};

} // namespace stackreel
