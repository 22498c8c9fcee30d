#include "framing/ExportSettings.h"

#include <algorithm>

namespace stackreel
{

namespace
{

std::int64_t evenSide(std::int64_t side)
{
    return std::max(side, std::int64_t{2}) & ~std::int64_t{1};
}

} // namespace

PixelSize ExportSettings::size() const
{
    switch (aspect) {
    case OutputAspect::portrait:
        return {.width = 1080, .height = 1920};
    case OutputAspect::feed:
        return {.width = 1080, .height = 1350};
    case OutputAspect::square:
        return {.width = 1080, .height = 1080};
    case OutputAspect::custom:
        break;
    }
    return {.width = evenSide(customWidth), .height = evenSide(customHeight)};
}

double panelAspect(PixelSize outputSize)
{
    return static_cast<double>(outputSize.width) / (static_cast<double>(outputSize.height) * 0.5);
}

} // namespace stackreel
