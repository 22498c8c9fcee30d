#pragma once

#include "ffmpeg-shim/SourceVideo.h"

#include <string>
#include <vector>

namespace stackreel::shim
{

/// What has to be done to the pictures of a source so that they are BT.709 with limited range.
struct ColourConversion {
    /// The matrix of the source as the `scale` filter names it; empty for R'G'B' and grey pictures, which
    /// have none.
    std::string matrix = {};
    bool isRgb = false;
    bool isGrey = false;
    bool fullRange = false;
    /// The colour tables to apply to R'G'B', in this order: names of files without their suffix.
    std::vector<std::string> tables = {};
    bool isInterlaced = false;

    /// Whether pictures are high dynamic range: PQ or HLG.
    bool isHdr() const;

    bool operator==(const ColourConversion&) const = default;
};

/// Decides on the conversion. Where the file does not say, pictures of at least 1280 pixels in width or more
/// than 576 in height count as BT.709, smaller ones as BT.601, and those of 480, 486 or 488 lines as BT.601
/// for 525 lines. R'G'B' has the full range.
ColourConversion conversionToBt709(const SourceVideo& source);

} // namespace stackreel::shim
