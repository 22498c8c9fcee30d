#pragma once

#include "player/base/Nanoseconds.h"

#include <cstdint>
#include <vector>

namespace stackreel
{

/// A stretch of sound: interleaved 16-bit stereo at 48 kHz.
struct SoundPiece {
    static constexpr int rate = 48000;
    static constexpr int channels = 2;

    Nanoseconds position = 0; ///< of its first sample on the file's time line
    std::vector<std::int16_t> samples;

    bool isEmpty() const { return samples.empty(); }
    Nanoseconds end() const;
    /// Leaves only what lies between two positions, to the nearest sample.
    void cut(Nanoseconds from, Nanoseconds to);
};

} // namespace stackreel
