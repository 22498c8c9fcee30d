#pragma once

#include "framing/CropRegion.h"
#include "framing/PixelSize.h"

#include <optional>
#include <string_view>

namespace stackreel
{

/// Parses the values of options. All functions are pure and independent of the locale, and return none for a
/// text that is not completely such a value.
struct OptionText {
    /// A time in seconds, finite and not negative: "12.5".
    static std::optional<double> seconds(std::string_view text);
    /// An output size in pixels, "1080x1920", not rounded: sides of 2 to 16384.
    static std::optional<PixelSize> size(std::string_view text);
    /// A crop region "X,Y,W,H" in fractions of the displayed frame, any finite numbers, moved and sized into
    /// the frame.
    static std::optional<CropRegion> region(std::string_view text);
};

} // namespace stackreel
