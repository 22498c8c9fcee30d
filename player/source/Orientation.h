#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace stackreel
{

/// How a stored picture is turned to stand upright: mirrored left to right first, then turned clockwise.
struct Orientation {
    int quarterTurns = 0; ///< clockwise, 0 to 3
    bool mirrored = false;

    bool swapsSides() const { return quarterTurns % 2 != 0; }
    bool operator==(const Orientation&) const = default;
};

/// Reads the value of GStreamer's `image-orientation` tag; a text it does not define means upright.
Orientation orientationFromTag(std::string_view tag);

/// One plane of 8-bit samples.
struct PlaneView {
    const std::uint8_t* data = nullptr;
    std::ptrdiff_t stride = 0; ///< bytes
    int width = 0;             ///< samples
    int height = 0;            ///< rows
};

/// Copies a plane upright. `target` has room for the turned plane, whose sides are exchanged where the
/// orientation says so, at `targetStride` bytes a row.
void orientPlane(const PlaneView& source, Orientation orientation, std::uint8_t* target,
                 std::ptrdiff_t targetStride);

} // namespace stackreel
