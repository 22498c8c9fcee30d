#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace stackreel
{

/// The properties of a source video that the program uses.
struct MediaInfo {
    std::int64_t width = 0;  ///< coded width in pixels, before rotation
    std::int64_t height = 0; ///< coded height in pixels, before rotation
    std::int64_t rotation =
        0;                  ///< display rotation in degrees exactly as reported, for example 90, -90 or 270
    double duration = 0;    ///< seconds; 0 when unknown
    std::string videoCodec; ///< "unknown" when not reported
    std::optional<std::string> audioCodec; ///< empty without audio, or when its codec is not reported

    /// Whether the picture is displayed rotated by 90° or 270°, so that the displayed width is the coded
    /// height and the other way round.
    bool isQuarterTurned() const
    {
        // Take the remainder first: the absolute value of the lowest possible rotation would overflow.
        const std::int64_t remainder = rotation % 180;
        return remainder == 90 || remainder == -90;
    }
    /// Width and height of the picture as displayed, in pixels.
    std::int64_t displayedWidth() const { return isQuarterTurned() ? height : width; }
    std::int64_t displayedHeight() const { return isQuarterTurned() ? width : height; }
    /// Displayed width divided by displayed height.
    double displayAspect() const
    {
        return static_cast<double>(displayedWidth()) / static_cast<double>(displayedHeight());
    }

    bool operator==(const MediaInfo&) const = default;
};

} // namespace stackreel
