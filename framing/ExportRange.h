#pragma once

namespace stackreel
{

/// The part of the source that an export renders, in seconds on the source's time line.
struct ExportRange {
    double start = 0;
    double length = 0; ///< at least a quarter of a second, even when the source is shorter

    /// The requested range, clamped to a source of the given duration.
    static ExportRange within(double duration, double trimStart, double trimEnd);

    bool operator==(const ExportRange&) const = default;
};

} // namespace stackreel
