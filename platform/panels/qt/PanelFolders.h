#pragma once

#include <filesystem>

namespace stackreel
{

/// Where the panels start, shared by the panels of one window: each where the user was last with it in this
/// run, and the save panel first in the folder of the file that was opened. Empty before any choice. Main
/// thread.
struct PanelFolders {
    std::filesystem::path open;
    std::filesystem::path save;
};

} // namespace stackreel
