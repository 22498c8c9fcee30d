#pragma once

#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// How a view lies on the screen's pixels.
struct PixelGrid {
    double devicePixelRatio = 1; ///< device pixels per point, positive
    double originX = 0;          ///< the view's top left corner in the window, points
    double originY = 0;
};

/// Where a picture of `pixels` is drawn inside a view of the size `view`: whole, at its own aspect, centred.
/// A picture that misses the fitted size by at most two device pixels, as one that was scaled for it does, is
/// drawn pixel for pixel on the grid instead of being scaled once more. Empty for an empty picture or view.
ViewRect pictureFrame(ViewSize pixels, ViewSize view, const PixelGrid& grid);

} // namespace stackreel
