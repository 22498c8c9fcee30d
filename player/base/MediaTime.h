#pragma once

#include <cstdint>

namespace stackreel
{

/// A point or length on a media time line, in whole units of 1/600 second (a scale in which the frame times
/// of 24, 25, 30 and 60 frames per second are whole), or no time at all.
class MediaTime
{
public:
    static constexpr std::int32_t timescale = 600;

    constexpr MediaTime() = default;
    /// The nearest unit, halves away from zero; no time for a value that is not finite or does not fit.
    static MediaTime fromSeconds(double seconds);
    static constexpr MediaTime fromUnits(std::int64_t units) { return MediaTime(units, true); }
    /// No time: what a player without an item reports.
    static constexpr MediaTime indefinite() { return MediaTime(0, false); }

    constexpr std::int64_t units() const { return m_units; }
    /// Not-a-number for no time.
    double seconds() const;

    bool operator==(const MediaTime&) const = default;

private:
    constexpr MediaTime(std::int64_t units, bool numeric) : m_units(units), m_numeric(numeric) {}

    std::int64_t m_units = 0;
    bool m_numeric = true;
};

/// A span of a media time line; `duration` is not negative.
struct MediaTimeRange {
    MediaTime start;
    MediaTime duration;

    bool operator==(const MediaTimeRange&) const = default;
};

} // namespace stackreel
