#pragma once

#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// How a view maps to device pixels: its scale and the offset of its origin.
struct PixelGrid {
    double devicePixelRatio = 1; ///< device pixels per point, positive
    double originX = 0;          ///< the view's top left corner in the window, points
    double originY = 0;

    /// The rectangle moved to the nearest boundaries between device pixels.
    ViewRect snapped(const ViewRect& rect) const;
};

/// Which part of a picture is drawn where.
struct PicturePlacement {
    ViewRect target; ///< in view points, on boundaries between device pixels
    ViewRect source; ///< in pixels of the picture

    bool operator==(const PicturePlacement&) const = default;
};

/// Places a picture of `pixels` inside a view of the size `view`: complete and centred, with the aspect ratio
/// `aspect` (width / height). Empty for an empty picture or view. Without a positive aspect ratio, the pixels
/// are square.
///
/// A picture that is up to two device pixels larger than the target is not scaled: it loses its last columns
/// and rows, so that it is drawn pixel for pixel.
PicturePlacement placePicture(ViewSize pixels, double aspect, ViewSize view, const PixelGrid& grid);

/// The size of a picture scaled for a view, in device pixels. Both sides are even, as video sizes are, and at
/// least as large as the view wherever it lies on the grid. Empty for an empty view.
ViewSize videoSize(ViewSize view, double devicePixelRatio);

} // namespace stackreel
