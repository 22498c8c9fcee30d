#include "ui/geometry/CropOverlayGeometry.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

bool isEmpty(ViewSize view)
{
    return !(view.width > 0 && view.height > 0);
}

} // namespace

ViewRect CropOverlayGeometry::displayRect(const CropRegion& region, ViewSize view)
{
    return {.x = region.x * view.width,
            .y = region.y * view.height,
            .width = region.width * view.width,
            .height = region.height * view.height};
}

CropRegion CropOverlayGeometry::moved(const CropRegion& start, ViewSize view, ViewTranslation translation)
{
    if (isEmpty(view))
        return start;
    const CropRegion candidate = {.x = start.x + translation.x / view.width,
                                  .y = start.y + translation.y / view.height,
                                  .width = start.width,
                                  .height = start.height};
    return candidate.clampedToFrame();
}

CropRegion CropOverlayGeometry::resized(const CropRegion& start, ViewSize view, ViewTranslation translation,
                                        double panelAspect)
{
    if (isEmpty(view) || !(panelAspect > 0))
        return start;
    const bool vertical = std::abs(translation.y) > std::abs(translation.x);
    const double candidate = vertical ? panelAspect * (view.height * start.height + translation.y)
                                      : view.width * start.width + translation.x;
    const double largestWidth =
        std::min(view.height * (1 - start.y) * panelAspect, view.width * (1 - start.x));
    const double width = std::min(candidate > smallestWidth ? candidate : smallestWidth, largestWidth);
    const double height = width / panelAspect;
    const CropRegion region = {
        .x = start.x, .y = start.y, .width = width / view.width, .height = height / view.height};
    return region.clampedToFrame();
}

} // namespace stackreel
