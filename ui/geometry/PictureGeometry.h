#pragma once

#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// How a view lies on the device pixels of the window, for drawing a picture without scaling it.
struct PixelGrid {
    double devicePixelRatio = 1; ///< device pixels per point, positive
    double originX = 0;          ///< the view's top left corner in the window, in points
    double originY = 0;
};

/// The rectangle in which a picture is drawn in a view: whole, centred and with its aspect ratio unchanged.
/// `pixels` is the size of the picture in pixels. A picture that differs from the fitted size by at most two
/// device pixels was already scaled for the view; it is drawn pixel for pixel instead of being scaled again.
/// Empty for an empty picture or view.
ViewRect pictureFrame(ViewSize pixels, ViewSize view, const PixelGrid& grid);

} // namespace stackreel
