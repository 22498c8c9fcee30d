#pragma once

#include <optional>
#include <string>

namespace stackreel
{

/// What a pointer on the trim timeline moves.
enum class TimelineInteraction { playhead, trimStart, trimEnd };

/// Maps times to positions on the trim timeline and back. Pure functions; positions are in view points, times
/// and durations in seconds. A duration of 0 means that there is no source.
struct TrimTimelineGeometry {
    static constexpr double inset = 18; ///< on each side of the track
    static constexpr double trackHeight = 42;
    static constexpr double handleTarget = 36; ///< width of a handle's hit area

    /// The track's width in a view; at least 1.
    static double trackWidth(double viewWidth);
    /// The position of a time on the track, from 0 to `width`; 0 without a source.
    static double position(double seconds, double duration, double width);
    /// The time at a position on the track, from 0 to `duration`; 0 without a source.
    static double seconds(double x, double duration, double width);
    /// The handle whose hit area contains the pointer, given the x of the pointer and of the handles'
    /// centres. The nearer handle if both do, the start handle if the distances are equal. Nothing if neither
    /// does.
    static std::optional<TimelineInteraction> hitTest(double pointer, double start, double end);
    /// How far one step by key or assistive technology moves a handle or the playhead.
    static double step(double duration);
    /// "M:SS", or "H:MM:SS" from one hour on. "0:00" for a negative or non-finite time.
    static std::string timeText(double seconds);
};

} // namespace stackreel
