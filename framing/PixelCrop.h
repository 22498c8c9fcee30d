#pragma once

#include <cstdint>

namespace stackreel
{

/// A crop in whole pixels of the displayed source frame, origin top-left. `x` and `y` are even and not
/// negative. The sides are even, too, with one exception in tiny frames: a crop that starts at the last pixel
/// of an odd side has a side of 1, for example `x` = 14 in a frame 15 pixels wide.
struct PixelCrop {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;

    bool operator==(const PixelCrop&) const = default;
};

} // namespace stackreel
