#pragma once

#include <string>
#include <string_view>

namespace stackreel
{

/// The filters, each after a comma, that give the pictures of a source about the luma of their export, which
/// is BT.709 in standard dynamic range. Grey pictures of both can be compared then. `transfer` is the line in
/// which ffprobe names the transfer characteristics of the source.
std::string lumaFilters(std::string_view transfer);

} // namespace stackreel
