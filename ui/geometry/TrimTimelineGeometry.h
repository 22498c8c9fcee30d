#pragma once

#include <optional>
#include <string>

namespace stackreel
{

/// What a pointer on the trim timeline moves.
enum class TimelineInteraction { playhead, trimStart, trimEnd };

/// Maps times to positions on the trim timeline and back. Pure functions. Positions are in points
/// (device-independent pixels), times and durations in seconds. A duration of 0 means that there is no
/// source.
struct TrimTimelineGeometry {
    static constexpr double inset = 18; ///< on each side of the track
    static constexpr double trackHeight = 42;
    static constexpr double handleTarget = 36; ///< width of a handle's hit area
    static constexpr double handleHeight = 46; ///< as far above the track as below it

    /// Whether a height, in points below the top of the track, is on the track or on a handle.
    static constexpr bool onTrack(double y) { return y >= 0 && y <= trackHeight; }
    static constexpr bool onHandle(double y)
    {
        constexpr double overhang = (handleHeight - trackHeight) / 2;
        return y >= -overhang && y <= trackHeight + overhang;
    }

    /// The track's width in a view; at least 1.
    static double trackWidth(double viewWidth);
    /// The position of a time on the track, from 0 to `width`; 0 without a source.
    static double position(double seconds, double duration, double width);
    /// The time at a position on the track, from 0 to `duration`; 0 without a source.
    static double seconds(double x, double duration, double width);
    /// The handle whose hit area contains the pointer. The parameters are the x coordinates of the pointer
    /// and of the centres of the two handles. If both hit areas contain it, the nearer handle; if both are
    /// equally near, the start handle. Returns `std::nullopt` if neither contains it.
    static std::optional<TimelineInteraction> hitTest(double pointer, double start, double end);
    /// How many seconds one step by a key or by assistive technology moves a handle or the playhead.
    static double step(double duration);
    /// "M:SS", or "H:MM:SS" from one hour on. "0:00" for a negative or non-finite time.
    static std::string timeText(double seconds);
};

} // namespace stackreel
