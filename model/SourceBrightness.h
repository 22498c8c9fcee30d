#pragma once

#include <string>
#include <string_view>

namespace stackreel
{

/// The filters, each after a comma, that give grey pictures of a source about the brightness of its export.
/// `transfer` is the line in which ffprobe names the transfer characteristics of the source. Empty except for
/// PQ and HLG (high dynamic range), which the export changes to standard dynamic range.
std::string brightnessFilters(std::string_view transfer);

} // namespace stackreel
