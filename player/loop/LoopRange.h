#pragma once

#include "player/base/Nanoseconds.h"

namespace stackreel
{

/// The part of a file that is played; `end` lies after `start`.
struct LoopRange {
    Nanoseconds start = 0;
    Nanoseconds end = 0;

    /// Whether what is on screen at `time` belongs to the range, times being as coarse as they are.
    bool contains(Nanoseconds time) const { return time >= start - halfUnit && !reachedBy(time); }
    /// Whether a frame that starts at `time` is past the range.
    bool reachedBy(Nanoseconds time) const { return time >= end - halfUnit; }
    bool operator==(const LoopRange&) const = default;
};

} // namespace stackreel
