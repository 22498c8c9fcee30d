#include "framing/ExportRange.h"

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr double shortest = 0.25;

double notNegative(double value)
{
    return value > 0 ? value : 0.0;
}

} // namespace

ExportRange ExportRange::within(double duration, double trimStart, double trimEnd)
{
    const double latestStart = notNegative(duration - shortest);
    const double start = notNegative(std::min(latestStart, trimStart));
    const double end = std::min(std::max(start + shortest, trimEnd), duration);
    return {.start = start, .length = std::max(end - start, shortest)};
}

} // namespace stackreel
