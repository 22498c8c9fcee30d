#include "media/MediaInfo.h"

namespace stackreel
{

bool MediaInfo::isQuarterTurned() const
{
    // Take the remainder first: the absolute value of the lowest possible rotation would overflow.
    const std::int64_t remainder = rotation % 180;
    return remainder == 90 || remainder == -90;
}

double MediaInfo::displayAspect() const
{
    return static_cast<double>(displayedWidth()) / static_cast<double>(displayedHeight());
}

} // namespace stackreel
