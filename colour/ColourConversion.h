#pragma once

#include <string>
#include <vector>

namespace stackreel
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
    std::string codec = {};

    bool operator==(const SourceVideo&) const = default;
};

/// What has to be done to the pictures of a source so that they are BT.709 with limited range.
struct ColourConversion {
    /// The matrix of the source as the `scale` filter names it, or "ycgco", which that filter does not know.
    /// Empty for R'G'B' and grey pictures, which have none.
    std::string matrix = {};
    bool isRgb = false;
    bool isGrey = false;
    bool fullRange = false; ///< false for R'G'B', which always has it
    /// The colour tables to apply to R'G'B', in this order: names of files without their suffix.
    std::vector<std::string> tables = {};
    bool isInterlaced = false;
    int rotation = 0; ///< as in `SourceVideo`
    /// What the source states and nothing here converts: "matrix", "gamma" or "primaries".
    std::vector<std::string> unconverted = {};

    /// Whether pictures are high dynamic range: PQ or HLG.
    bool isHdr() const;

    bool operator==(const ColourConversion&) const = default;
};

/// Decides on the conversion. What the file does not say is guessed:
/// - The matrix is that of BT.2020 for PQ, HLG and the primaries of BT.2020. Otherwise pictures of at least
///   1280 pixels in width or more than 576 in height have that of BT.709, smaller ones that of BT.601.
/// - The primaries are those of BT.2020 for PQ, HLG and the matrix of BT.2020. Smaller pictures of 480,
///   486 or 488 lines have those of BT.601 for 525 lines, unless the matrix or the transfer characteristics
///   are stated as others than those of BT.601 for 525 lines. All others have those of BT.709.
/// - R'G'B' and grey have the full range, others the limited range.
ColourConversion conversionToBt709(const SourceVideo& source);

} // namespace stackreel
