#pragma once

#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// The position of a view on the grid of device pixels.
struct PixelGrid {
    double devicePixelRatio = 1; ///< device pixels per point, positive
    double originX = 0;          ///< the view's top left corner in the window, points
    double originY = 0;
};

/// The rectangle of a picture of `pixels` inside a view of the size `view`: complete, centred and at its own
/// aspect ratio. A picture that was already scaled for the view differs from the fitted size by at most two
/// device pixels. It is drawn pixel for pixel instead of being scaled again. Empty for an empty picture or
/// view.
ViewRect pictureFrame(ViewSize pixels, ViewSize view, const PixelGrid& grid);

} // namespace stackreel
