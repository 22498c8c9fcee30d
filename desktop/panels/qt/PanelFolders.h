#pragma once

#include <filesystem>

namespace stackreel
{

/// The folders in which the panels of one window start: the open panel in the folder of the file that it has
/// opened last, the save panel beside the source. Empty before the first choice. The open panel's folder is
/// kept between runs in a small file of the user; one that cannot be read counts as empty, and one that
/// cannot be written is left as it is. Main thread.
class PanelFolders
{
public:
    /// Reads the open panel's folder from `file`. With an empty path nothing is read or kept.
    explicit PanelFolders(std::filesystem::path file = {});

    /// The file to use: `open-folder` in the program's state folder.
    static std::filesystem::path standardFile();

    const std::filesystem::path& open() const { return m_open; }
    /// The folder of the file that was opened in this run.
    const std::filesystem::path& save() const { return m_save; }
    /// Takes the folder of a file that was chosen with the open panel.
    void setOpenedFile(const std::filesystem::path& file);

private:
    void write() const;

    std::filesystem::path m_file;
    std::filesystem::path m_open;
    std::filesystem::path m_save;
};

} // namespace stackreel
