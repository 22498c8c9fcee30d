#pragma once

#include "player/base/VideoFrame.h"
#include "tests/player/MarkedClip.h"

#include <array>
#include <cstddef>

namespace stackreel
{

/// A clip with four quarters of different brightness, which show how it was rotated and mirrored.
inline const MarkedClip quartersClip{
    .name = "quarters.mp4", .frames = 5, .luma = "60+40*gte(X\\,W/2)+80*gte(Y\\,H/2)"};

/// The eight combinations of rotation by 90° and mirroring, as matrices for `rotatedCopy`.
inline constexpr std::array<std::array<int, 4>, 8> allOrientations = {{{1, 0, 0, 1},
                                                                       {0, 1, -1, 0},
                                                                       {-1, 0, 0, -1},
                                                                       {0, -1, 1, 0},
                                                                       {-1, 0, 0, 1},
                                                                       {1, 0, 0, -1},
                                                                       {0, 1, 1, 0},
                                                                       {0, -1, -1, 0}}};

/// The green value in the middle of each quarter of a frame, row by row.
inline std::array<int, 4> quarters(const VideoFrame& frame)
{
    std::array<int, 4> levels{};
    for (std::size_t i = 0; i < 4; ++i) {
        const int x = (i % 2 == 0 ? 1 : 3) * frame.width / 4;
        const int y = (i < 2 ? 1 : 3) * frame.height / 4;
        levels.at(i) = std::to_integer<int>(frame.pixels[y * frame.bytesPerLine + x * 4 + 1]);
    }
    return levels;
}

} // namespace stackreel
