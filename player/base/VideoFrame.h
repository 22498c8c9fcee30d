#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace stackreel
{

/// One upright picture ready to be drawn: 32 bits a pixel, blue first, the fourth byte unused and opaque
/// (what Qt calls RGB32 on little-endian machines). The pixels belong to `owner` and stay valid and unchanged
/// with it.
struct VideoFrame {
    std::shared_ptr<const void> owner;
    const std::byte* pixels = nullptr;
    int width = 0;  ///< pixels
    int height = 0; ///< pixels
    std::ptrdiff_t bytesPerLine = 0;
    double seconds = 0; ///< presentation time on the file's time line
};

} // namespace stackreel
