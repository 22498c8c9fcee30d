#pragma once

#include <filesystem>

namespace stackreel
{

/// The folders in which the panels of one window start. Each panel starts in the folder of the last file
/// chosen with it in this run. Opening a file also sets the save panel's folder. Empty before any choice.
/// Main thread.
struct PanelFolders {
    std::filesystem::path open;
    std::filesystem::path save;
};

} // namespace stackreel
