#pragma once

#include <filesystem>

namespace stackreel
{

/// The folders in which the panels of one window start. Each panel starts in the folder of the file that was
/// last chosen with it. Opening a file also sets the save panel's folder. A folder is empty before the first
/// choice. The open panel's folder is kept between runs in a small file of the user; one that cannot be read
/// counts as empty, and one that cannot be written is left as it is. Main thread.
class PanelFolders
{
public:
    /// Reads the open panel's folder from `file`. With an empty path nothing is read or kept.
    explicit PanelFolders(std::filesystem::path file = {});

    /// The file to use: `open-folder` in the program's state folder.
    static std::filesystem::path standardFile();

    const std::filesystem::path& open() const { return m_open; }
    const std::filesystem::path& save() const { return m_save; }
    /// Takes the folder of a file that was chosen with the open panel.
    void setOpenedFile(const std::filesystem::path& file);
    /// Takes the folder of a file that was chosen with the save panel.
    void setSavedFile(const std::filesystem::path& file) { m_save = file.parent_path(); }

private:
    void write() const;

    std::filesystem::path m_file;
    std::filesystem::path m_open;
    std::filesystem::path m_save;
};

} // namespace stackreel
