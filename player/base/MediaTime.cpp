#include "player/base/MediaTime.h"

#include <cmath>
#include <limits>

namespace stackreel
{

MediaTime MediaTime::fromSeconds(double seconds)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double units = std::round(seconds * timescale);
    if (!(units >= -limit && units < limit))
        return indefinite();
    return fromUnits(static_cast<std::int64_t>(units));
}

double MediaTime::seconds() const
{
    if (!m_numeric)
        return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(m_units) / timescale;
}

} // namespace stackreel
