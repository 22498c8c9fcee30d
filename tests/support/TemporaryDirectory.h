#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A new folder that is removed with the object, with all it holds. Its name has blanks, quotes, a percent
/// sign, accents and CJK in it, so that whatever works inside it copes with such paths.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }

    /// The names of what lies directly in the folder, sorted.
    std::vector<std::string> names() const;
    /// Writes a file, making its folders; gives its path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const;
    /// Writes a file that may be executed.
    std::filesystem::path writeExecutable(const std::filesystem::path& name, std::string_view content) const;

private:
    std::filesystem::path m_path;
};

/// The whole content of a file, empty when it cannot be read.
std::string contentOf(const std::filesystem::path& file);

} // namespace stackreel
