#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The first video stream of a file. The texts are the words of ffprobe, "unknown" or empty where the file
/// does not say.
struct SourceVideo {
    int width = 0;  ///< pixels, as coded
    int height = 0; ///< pixels, as coded
    std::string pixelFormat;
    std::string range;     ///< "tv" is limited, "pc" is full
    std::string matrix;    ///< from R'G'B' to Y'CbCr
    std::string transfer;  ///< the transfer characteristics
    std::string primaries; ///< the colour primaries
    std::string fieldOrder;
    int rotation = 0; ///< degrees, counterclockwise, that the picture is turned for display; -180 to 180

    bool operator==(const SourceVideo&) const = default;
};

/// The arguments of `ffprobe` to describe the first video stream of `file`.
std::vector<std::string> sourceVideoQuery(const std::string& file);

/// Parses what `ffprobe` prints for `sourceVideoQuery`. Ignores lines that it does not know. Returns
/// `std::nullopt` if the size or the pixel format is missing, for example because there is no video stream.
std::optional<SourceVideo> parseSourceVideo(std::string_view report);

} // namespace stackreel::shim
