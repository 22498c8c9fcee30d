#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace stackreel::shim
{

/// Which lines of a picture belong to its first moment, and what the file says about them.
enum class Fields {
    topFirst,
    bottomFirst,
    unmarked, ///< the top field is first, but the file says progressive
    dv,       ///< the bottom field is first, and ffprobe does not know it
};

/// The size of the pictures, in pixels.
struct ClipSize {
    int width;
    int height;
};
ClipSize sizeOf(Fields fields);

/// A file in `folder`, which is made: a second of ten pictures, or 0.4 seconds of DV. Vertical bars move on
/// by 16 pixels between the two fields of each picture.
std::filesystem::path interlacedClip(const std::filesystem::path& folder, Fields fields);

/// The mean difference of neighbouring lines in the 8-bit luma of one picture.
double roughness(std::string_view luma, std::size_t width);

} // namespace stackreel::shim
