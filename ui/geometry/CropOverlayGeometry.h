#pragma once

#include "framing/CropRegion.h"
#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// How a crop region is shown and edited over a picture of `view` points. Pure functions of the region at the
/// start of the drag and the distance since then. Rounding errors do not accumulate, and dragging back to the
/// start restores the start region exactly.
struct CropOverlayGeometry {
    /// Minimum width of a crop when resized by dragging, in points, unless less space is left in the view.
    static constexpr double smallestWidth = 80;

    /// Where the region is drawn.
    static ViewRect displayRect(const CropRegion& region, ViewSize view);

    /// The region after its body was dragged: the same size, clamped to the frame.
    static CropRegion moved(const CropRegion& start, ViewSize view, ViewTranslation translation);

    /// The region after its lower right corner was dragged. The upper left corner stays. The aspect ratio in
    /// points is `panelAspect`, unless the minimum side length of a `CropRegion` prevents it. The longer axis
    /// of the translation sets the size; the horizontal one if both are equal.
    static CropRegion resized(const CropRegion& start, ViewSize view, ViewTranslation translation,
                              double panelAspect);
};

} // namespace stackreel
