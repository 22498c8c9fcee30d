#include "ui/geometry/TrimTimelineGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace stackreel
{

namespace
{

double clampedToUnit(double fraction)
{
    return std::min(std::max(fraction, 0.0), 1.0);
}

std::string twoDigits(std::int64_t number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

double TrimTimelineGeometry::trackWidth(double viewWidth)
{
    return std::max(std::max(viewWidth, 1.0) - 2 * inset, 1.0);
}

double TrimTimelineGeometry::position(double seconds, double duration, double width)
{
    return duration > 0 ? width * clampedToUnit(seconds / duration) : 0;
}

double TrimTimelineGeometry::seconds(double x, double duration, double width)
{
    return duration > 0 ? clampedToUnit(x / width) * duration : 0;
}

std::optional<TimelineInteraction> TrimTimelineGeometry::hitTest(double pointer, double start, double end)
{
    constexpr double grabDistance = handleTarget * 0.5;
    const double toStart = std::abs(pointer - start);
    const double toEnd = std::abs(pointer - end);
    if (toStart > grabDistance && toEnd > grabDistance)
        return std::nullopt;
    return toStart <= toEnd ? TimelineInteraction::trimStart : TimelineInteraction::trimEnd;
}

double TrimTimelineGeometry::step(double duration)
{
    return std::max(duration / 100, 0.25);
}

std::string TrimTimelineGeometry::timeText(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        return "0:00";
    const auto whole = static_cast<std::int64_t>(std::min(std::round(seconds), 9e15));
    const std::int64_t hours = whole / 3600;
    const std::int64_t minutes = whole % 3600 / 60;
    if (hours == 0)
        return std::to_string(minutes) + ":" + twoDigits(whole % 60);
    return std::to_string(hours) + ":" + twoDigits(minutes) + ":" + twoDigits(whole % 60);
}

} // namespace stackreel
