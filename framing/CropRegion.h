#pragma once

#include "framing/PixelCrop.h"

#include <utility>

namespace stackreel
{

struct MediaInfo;

/// A crop rectangle in fractions of the displayed source frame (after its rotation), origin top-left. As the
/// fractions are of different lengths, the crop's true aspect is (width / height) × source aspect.
///
/// The functions below are pure and keep the frame invariant: sides in [0.06, 1], `x` in [0, 1 − width], `y`
/// in [0, 1 − height]. A source aspect is displayed width / displayed height; a panel aspect is that of one
/// half of the output (`panelAspect`).
struct CropRegion {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    /// The regions a freshly loaded source starts with, top and bottom: panel-shaped, at the left and the
    /// right of the frame with a margin of 4 %, vertically centred.
    static std::pair<CropRegion, CropRegion> initialPair(double sourceAspect, double panelAspect);

    /// This region reshaped to a panel, about the same centre and with the same width where that fits.
    CropRegion adaptingAspect(double sourceAspect, double panelAspect) const;

    /// This region moved and sized into the frame: sides first, then the position.
    CropRegion clampedToFrame() const;

    /// The region in whole pixels of the displayed frame, rounded down to even ones. Ends the program when a
    /// coordinate is not finite or does not fit 64 bits, which no region that keeps the invariant can cause.
    PixelCrop sourcePixels(const MediaInfo& media) const;

    bool operator==(const CropRegion&) const = default;
};

} // namespace stackreel
