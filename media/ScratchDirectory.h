#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A folder for one run of a child process, "Stackreel-Process-" and a random UUID in the temporary
/// directory. It is made with the object and removed with it, with all it holds. Only this user can look into
/// it.
class ScratchDirectory
{
public:
    /// Throws `SystemError` when the folder cannot be made.
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return m_path; }

    /// The path of a file in the folder, which is then removed even when no descriptor is left to look into
    /// the folder with. Does not make the file.
    std::filesystem::path file(std::string_view name);

private:
    std::filesystem::path m_path;
    std::vector<std::filesystem::path> m_files;
};

} // namespace stackreel
