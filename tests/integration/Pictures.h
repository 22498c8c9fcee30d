#pragma once

#include "framing/PixelCrop.h"
#include "framing/PixelSize.h"

#include <filesystem>
#include <vector>

namespace stackreel
{

/// The upper or the lower half of an exported picture.
enum class Half { top, bottom };

/// The similarity of one half of an exported video and a crop of its source: the SSIM of all frames and
/// planes, 1 if they are the same. The crop is in displayed pixels; the source is compared from `start`
/// seconds on.
double similarity(const std::filesystem::path& exported, PixelSize outputSize, Half half,
                  const std::filesystem::path& source, PixelCrop crop, double start);

/// The luma of one pixel in the middle of each frame (0 to 255), in the order of the frames.
std::vector<int> greys(const std::filesystem::path& video);

/// The level of the loudest audio sample, in dBFS.
double peakLevel(const std::filesystem::path& file);

} // namespace stackreel
