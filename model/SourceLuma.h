#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace stackreel
{

/// The filters, each after a comma, that give the pictures of a source the luma of their export, which is
/// BT.709 in standard dynamic range. Grey pictures of both can be compared then. `transfer` is the line in
/// which ffprobe names the transfer characteristics of the source. `tables` is the folder of the colour
/// tables for high dynamic range; without them its luma is about that of the export only.
std::string lumaFilters(std::string_view transfer, const std::filesystem::path& tables);

} // namespace stackreel
