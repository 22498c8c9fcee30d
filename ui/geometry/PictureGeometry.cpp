#include "ui/geometry/PictureGeometry.h"

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

} // namespace

ViewRect pictureFrame(ViewSize pixels, ViewSize view, const PixelGrid& grid)
{
    if (pixels.width <= 0 || pixels.height <= 0)
        return {};
    const ViewRect fitted = fittedFrame(view, pixels.width / pixels.height);
    const ViewSize exact = {.width = pixels.width / grid.devicePixelRatio,
                            .height = pixels.height / grid.devicePixelRatio};
    const double tolerance = tolerancePixels / grid.devicePixelRatio;
    if (std::abs(fitted.width - exact.width) > tolerance ||
        std::abs(fitted.height - exact.height) > tolerance)
        return fitted;
    return {.x = snappedToPixel((view.width - exact.width) / 2, grid.originX, grid.devicePixelRatio),
            .y = snappedToPixel((view.height - exact.height) / 2, grid.originY, grid.devicePixelRatio),
            .width = exact.width,
            .height = exact.height};
}

} // namespace stackreel
