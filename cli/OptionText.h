#pragma once

#include "framing/CropRegion.h"
#include "framing/PixelSize.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace stackreel
{

/// Parses the values of options. All functions are pure and independent of the locale. They return
/// `std::nullopt` if the text as a whole is not such a value.
struct OptionText {
    /// The bounds of the sides of an output, in pixels.
    static constexpr std::int64_t smallestSide = 2;
    static constexpr std::int64_t largestSide = 16384;
    /// No file has more sound tracks.
    static constexpr std::int64_t lastTrack = 100'000;

    /// No clip is longer, in seconds: 31 years.
    static constexpr double latestTime = 1e9;

    /// A time in seconds from 0 to `latestTime`: "12.5".
    static std::optional<double> seconds(std::string_view text);
    /// An output size in pixels, with sides of 2 to 16384: "1080x1920". It is not rounded to even numbers.
    static std::optional<PixelSize> size(std::string_view text);
    /// A crop region "X,Y,W,H" in fractions of the displayed frame. Any finite numbers are allowed; the
    /// region is then shrunk and moved to fit inside the frame.
    static std::optional<CropRegion> region(std::string_view text);
    /// The number of a sound track, counted from 1.
    static std::optional<std::int64_t> track(std::string_view text);
};

} // namespace stackreel
