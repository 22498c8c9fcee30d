#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A new folder. The destructor removes it with its contents. Its name contains spaces, quotes, a percent
/// sign, accents and CJK characters, so that each test that uses it also tests such paths.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }

    /// The names of the entries in the folder, sorted.
    std::vector<std::string> names() const;
    /// Writes a file and creates its parent folders. Returns its path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const;
    /// Writes a file with permission to execute it.
    std::filesystem::path writeExecutable(const std::filesystem::path& name, std::string_view content) const;

private:
    std::filesystem::path m_path;
};

/// The whole content of a file; empty if it cannot be read.
std::string contentOf(const std::filesystem::path& file);

} // namespace stackreel
