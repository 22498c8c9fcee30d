#pragma once

#include <filesystem>

namespace stackreel
{

/// Removes hidden files in the destination folder and scratch folders that earlier exports of this user left
/// behind, for example after SIGKILL. Files in use stay.
void removeLeftovers(const std::filesystem::path& destinationFolder);

} // namespace stackreel
