#pragma once

#include <cstdint>

namespace stackreel
{

/// A crop in whole pixels of the displayed source frame, origin top-left. `x` and `y` are even and not
/// negative; the sides are even too, except where a frame with an odd side leaves a single pixel.
struct PixelCrop {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;

    bool operator==(const PixelCrop&) const = default;
};

} // namespace stackreel
