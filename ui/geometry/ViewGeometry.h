#pragma once

namespace stackreel
{

/// A size in points (device-independent pixels).
struct ViewSize {
    double width = 0;
    double height = 0;

    bool operator==(const ViewSize&) const = default;
};

/// A rectangle in points (device-independent pixels), origin top-left.
struct ViewRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const ViewRect&) const = default;
};

/// How far the pointer has moved since the drag began, in points (device-independent pixels).
struct ViewTranslation {
    double x = 0;
    double y = 0;
};

/// The largest centred rectangle with this aspect ratio (width / height) inside an area. Empty if the area or
/// the aspect ratio is not positive.
ViewRect fittedFrame(ViewSize area, double aspect);

} // namespace stackreel
