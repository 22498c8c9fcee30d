#pragma once

#include <filesystem>

namespace stackreel
{

/// Removes what earlier exports of this user have left behind where nothing could remove it at their end:
/// hidden files in the folder of the destination, and scratch folders. What another program uses stays.
void removeLeftovers(const std::filesystem::path& destinationFolder);

} // namespace stackreel
