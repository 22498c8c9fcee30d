#pragma once

#include "framing/CropRegion.h"
#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

/// How a crop region is shown and edited over a picture of `view` points. Pure functions of where a drag
/// began and how far it has come, so that a drag never accumulates: coming back to its start gives the start
/// back.
struct CropOverlayGeometry {
    /// The narrowest a crop gets by dragging, in points, unless there is less room.
    static constexpr double smallestWidth = 80;

    /// Where the region is drawn.
    static ViewRect displayRect(const CropRegion& region, ViewSize view);

    /// The region after its body was dragged: the same size, pinned to the edge it was dragged past.
    static CropRegion moved(const CropRegion& start, ViewSize view, ViewTranslation translation);

    /// The region after its lower right corner was dragged: the upper left corner stays, the shape in points
    /// is the panel's (width / height), and the axis dragged further leads, the horizontal one on a tie. Only
    /// the smallest region side of the frame breaks the shape.
    static CropRegion resized(const CropRegion& start, ViewSize view, ViewTranslation translation,
                              double panelAspect);
};

} // namespace stackreel
