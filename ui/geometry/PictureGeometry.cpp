#include "ui/geometry/PictureGeometry.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

constexpr double tolerancePixels = 2;

/// The position on a boundary between two device pixels that is nearest to `start`.
double snappedToPixel(double start, double origin, double ratio)
{
    return std::round((origin + start) * ratio) / ratio - origin;
}

/// The side of the picture that is drawn on a target side, both in pixels.
double drawnSide(double picture, double target)
{
    const double excess = picture - target;
    return excess > 0 && excess <= tolerancePixels ? target : picture;
}

/// The fitted rectangle; the whole view where that differs by less than half a device pixel. Otherwise a
/// rounding error could leave a line of the background at an edge.
ViewRect fittedOrWhole(ViewSize view, double aspect, double ratio)
{
    const ViewRect fitted = fittedFrame(view, aspect);
    const bool fills = std::max(view.width - fitted.width, view.height - fitted.height) * ratio < 0.5;
    return fills ? ViewRect{.width = view.width, .height = view.height} : fitted;
}

double evenSide(double pixels)
{
    // The tolerance keeps a rounding error from adding two pixels.
    return 2 * std::ceil(pixels / 2 - 1e-6);
}

} // namespace

ViewRect PixelGrid::snapped(const ViewRect& rect) const
{
    const double left = snappedToPixel(rect.x, originX, devicePixelRatio);
    const double top = snappedToPixel(rect.y, originY, devicePixelRatio);
    return {.x = left,
            .y = top,
            .width = snappedToPixel(rect.x + rect.width, originX, devicePixelRatio) - left,
            .height = snappedToPixel(rect.y + rect.height, originY, devicePixelRatio) - top};
}

PicturePlacement placePicture(ViewSize pixels, double aspect, ViewSize view, const PixelGrid& grid)
{
    if (pixels.width <= 0 || pixels.height <= 0)
        return {};
    const double shown = aspect > 0 ? aspect : pixels.width / pixels.height;
    const ViewRect target = grid.snapped(fittedOrWhole(view, shown, grid.devicePixelRatio));
    const double width = drawnSide(pixels.width, std::round(target.width * grid.devicePixelRatio));
    const double height = drawnSide(pixels.height, std::round(target.height * grid.devicePixelRatio));
    return {.target = target, .source = {.width = width, .height = height}};
}

ViewSize videoSize(ViewSize view, double devicePixelRatio)
{
    return {.width = evenSide(view.width * devicePixelRatio),
            .height = evenSide(view.height * devicePixelRatio)};
}

} // namespace stackreel
