#pragma once

#include "player/base/MediaTime.h"

#include <algorithm>
#include <cstdint>

namespace stackreel
{

/// A time or length on a media time line, in whole nanoseconds, as GStreamer counts.
using Nanoseconds = std::int64_t;

inline constexpr Nanoseconds second = 1'000'000'000;
inline constexpr Nanoseconds millisecond = 1'000'000;

/// Half a unit of `MediaTime`. Times handed to the player were rounded to units, frame times in files to
/// whatever the container counts in, so a frame belongs to a time as soon as it starts within half a unit.
inline constexpr Nanoseconds halfUnit = second / (2 * MediaTime::timescale);

/// The nearest nanosecond. No time gives 0, and times too large for any file are limited to some decades.
inline Nanoseconds toNanoseconds(MediaTime time)
{
    if (time == MediaTime::indefinite())
        return 0;
    constexpr std::int64_t limit = 1'000'000'000'000;
    constexpr std::int64_t thirdsPerUnit = 3 * second / MediaTime::timescale;
    const std::int64_t thirds = std::clamp(time.units(), -limit, limit) * thirdsPerUnit;
    return (thirds + (thirds < 0 ? -1 : 1)) / 3;
}

inline double toSeconds(Nanoseconds time)
{
    return static_cast<double>(time) / static_cast<double>(second);
}

} // namespace stackreel
