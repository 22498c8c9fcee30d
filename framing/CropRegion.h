#pragma once

#include "framing/PixelCrop.h"

#include <utility>

namespace stackreel
{

struct MediaInfo;

/// A crop rectangle in fractions of the displayed source frame (after its rotation), origin top-left. `x` and
/// `width` are fractions of its width, `y` and `height` of its height, so the crop's aspect on screen is
/// (width / height) × source aspect.
///
/// The functions below are pure. The regions that they return lie inside the frame: sides in [0.06, 1], `x`
/// in [0, 1 − width], `y` in [0, 1 − height]. A source aspect is displayed width / displayed height; a panel
/// aspect is that of one half of the output (`panelAspect`).
struct CropRegion {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    /// The regions that a newly loaded source starts with, top and bottom: with the panel aspect, at the
    /// left and the right of the frame with a margin of 4 %, vertically centred.
    static std::pair<CropRegion, CropRegion> initialPair(double sourceAspect, double panelAspect);

    /// This region with the panel aspect, the same centre, and the same width where that fits.
    CropRegion adaptingAspect(double sourceAspect, double panelAspect) const;

    /// This region clamped to the frame: its sides first, then its position.
    CropRegion clampedToFrame() const;

    /// The region in whole pixels of the displayed frame, rounded down to even numbers. Aborts the program
    /// when a coordinate is not finite or does not fit 64 bits, which a region inside the frame cannot cause.
    PixelCrop sourcePixels(const MediaInfo& media) const;

    bool operator==(const CropRegion&) const = default;
};

} // namespace stackreel
