#pragma once

#include "colour/ColourConversion.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The arguments of `ffprobe` to describe the first video stream of `file`.
std::vector<std::string> sourceVideoQuery(const std::string& file);

/// Parses what `ffprobe` prints for `sourceVideoQuery`. Ignores lines that it does not know. Returns
/// `std::nullopt` if the size or the pixel format is missing, for example because there is no video stream.
std::optional<SourceVideo> parseSourceVideo(std::string_view report);

} // namespace stackreel::shim
