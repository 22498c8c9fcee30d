#pragma once

#include "player/base/Nanoseconds.h"
#include "player/pictures/PlanarFrame.h"

#include <cstdint>

namespace stackreel
{

/// A frame with the moment it is to be shown.
struct QueuedFrame {
    PlanarFramePtr frame;        ///< never null in a queue
    Nanoseconds due = 0;         ///< on the line of played time, which runs on where the range begins again
    Nanoseconds position = 0;    ///< on the file's time line, the playhead at `due`
    std::uint64_t iteration = 0; ///< how often the range had begun again by then
    bool kept = false;           ///< the frame stays in memory anyway
};

} // namespace stackreel
