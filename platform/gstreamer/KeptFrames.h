#pragma once

#include "platform/gstreamer/LoopRange.h"
#include "platform/gstreamer/PictureSize.h"
#include "platform/gstreamer/PlanarFrame.h"

#include <cstddef>
#include <vector>

namespace stackreel
{

/// The first frames of a range, kept so that the range can begin again without waiting for the decoder, which
/// has to start at a key frame that may lie far before. All of them, when they fit: then nothing is decoded
/// any more while the range repeats.
struct KeptFrames {
    LoopRange range;
    PictureSize box; ///< what the frames were scaled to fit into
    std::vector<PlanarFramePtr> frames;
    std::size_t bytes = 0;
    bool complete = false;
    Nanoseconds end = 0; ///< of the range, or of what the file has of it; only when complete

    /// Adds the next frame unless that would exceed `budget` bytes. The first second may take three times as
    /// much: so long a decoder can take to get back to the range's start from a key frame far before, and
    /// large pictures would not last.
    bool add(const PlanarFramePtr& frame, std::size_t budget)
    {
        const bool bridges = frame->time - range.start < second;
        if (bytes + frame->bytes() > (bridges ? 3 * budget : budget))
            return false;
        bytes += frame->bytes();
        frames.push_back(frame);
        return true;
    }
};

} // namespace stackreel
