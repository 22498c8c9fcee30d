#pragma once

#include "framing/CropRegion.h"
#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// Computes how a crop region is shown over a picture of the size `view` and how a drag changes it. The
/// functions are pure: the result depends on the region at the start of the drag and on the distance since
/// then. Therefore rounding errors do not accumulate, and dragging back to the start restores the region
/// exactly.
struct CropOverlayGeometry {
    /// The minimum width of a crop that is resized by dragging, in points, unless the view has less space.
    static constexpr double smallestWidth = 80;

    /// The rectangle of the view in which the region is drawn.
    static ViewRect displayRect(const CropRegion& region, ViewSize view);

    /// The region after its body was dragged: the same size, clamped to the frame.
    static CropRegion moved(const CropRegion& start, ViewSize view, ViewTranslation translation);

    /// The region after its lower right corner was dragged. The upper left corner stays. The aspect ratio in
    /// points is `panelAspect`, unless the minimum side length of a `CropRegion` prevents it. The larger
    /// component of the translation determines the size; the horizontal one if both are equal.
    static CropRegion resized(const CropRegion& start, ViewSize view, ViewTranslation translation,
                              double panelAspect);
};

} // namespace stackreel
