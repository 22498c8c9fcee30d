#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace stackreel
{

/// The facts about a source video that everything else works from.
struct MediaInfo {
    std::int64_t width = 0;  ///< coded width in pixels, not exchanged for rotation
    std::int64_t height = 0; ///< coded height in pixels, not exchanged for rotation
    std::int64_t rotation =
        0;                  ///< display rotation in degrees exactly as reported, for example 90, -90 or 270
    double duration = 0;    ///< seconds; 0 when unknown
    std::string videoCodec; ///< "unknown" when not reported
    std::optional<std::string> audioCodec; ///< none without audio, or when its codec is not reported

    /// Whether the picture is shown turned by a quarter, so that displayed width and height are the coded
    /// ones exchanged.
    bool isQuarterTurned() const;
    /// Width and height of the picture as displayed, in pixels.
    std::int64_t displayedWidth() const { return isQuarterTurned() ? height : width; }
    std::int64_t displayedHeight() const { return isQuarterTurned() ? width : height; }
    /// Displayed width divided by displayed height.
    double displayAspect() const;

    bool operator==(const MediaInfo&) const = default;
};

} // namespace stackreel
