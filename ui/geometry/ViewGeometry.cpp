#include "ui/geometry/ViewGeometry.h"

namespace stackreel
{

ViewRect fittedFrame(ViewSize area, double aspect)
{
    if (!(area.width > 0 && area.height > 0 && aspect > 0))
        return {};
    const bool pillarBoxed = aspect < area.width / area.height;
    const double width = pillarBoxed ? aspect * area.height : area.width;
    const double height = pillarBoxed ? area.height : area.width / aspect;
    return {.x = (area.width - width) / 2, .y = (area.height - height) / 2, .width = width, .height = height};
}

} // namespace stackreel
