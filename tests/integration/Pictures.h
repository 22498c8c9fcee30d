#pragma once

#include "framing/PixelCrop.h"
#include "framing/PixelSize.h"

#include <filesystem>
#include <vector>

namespace stackreel
{

/// Where a panel lies in an exported picture.
enum class Half { top, bottom };

/// How alike one half of an exported video and a crop of its source are: SSIM over all frames and planes, 1
/// for the same. The source is cropped as it is displayed, from `start` seconds on.
double similarity(const std::filesystem::path& exported, PixelSize outputSize, Half half,
                  const std::filesystem::path& source, PixelCrop crop, double start);

/// The luma in the middle of each frame, 0 to 255, in order.
std::vector<int> greys(const std::filesystem::path& video);

/// The loudest sample of the sound in decibels below full scale.
double peakLevel(const std::filesystem::path& file);

} // namespace stackreel
