#pragma once

#include <optional>
#include <string>

namespace stackreel
{

/// What a pointer on the trim timeline moves.
enum class TimelineInteraction { playhead, trimStart, trimEnd };

/// How times lie on the trim timeline. Pure functions; positions in view points, times and durations in
/// seconds. A duration of 0 stands for no source.
struct TrimTimelineGeometry {
    static constexpr double inset = 18; ///< on each side of the track
    static constexpr double trackHeight = 42;
    static constexpr double handleTarget = 36; ///< width of the zone around a handle's centre that grabs it

    /// The track's width in a view; at least 1.
    static double trackWidth(double viewWidth);
    /// A time's place on the track, from 0 to `width`; 0 without a source.
    static double position(double seconds, double duration, double width);
    /// The time at a place on the track, from 0 to `duration`; 0 without a source.
    static double seconds(double x, double duration, double width);
    /// The handle a pointer grabs, given the x of the pointer and of the handles' centres; none when it is
    /// near neither. Of two the nearer one, the start handle on a tie.
    static std::optional<TimelineInteraction> hitTest(double pointer, double start, double end);
    /// How far one step of a key or of assistive technology moves a handle or the playhead.
    static double step(double duration);
    /// "M:SS", or "H:MM:SS" from an hour on; "0:00" for a negative or no finite time.
    static std::string timeText(double seconds);
};

} // namespace stackreel
