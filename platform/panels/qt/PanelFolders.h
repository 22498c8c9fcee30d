#pragma once

#include <filesystem>

namespace stackreel
{

/// The folders in which the panels of one window start. Each panel starts in the folder of the file that was
/// last chosen with it since the program started. Opening a file also sets the save panel's folder. A folder
/// is empty before the first choice. Main thread.
struct PanelFolders {
    std::filesystem::path open;
    std::filesystem::path save;
};

} // namespace stackreel
