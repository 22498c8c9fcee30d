#pragma once

#include "player/loop/LoopRange.h"
#include "player/pictures/PictureSize.h"
#include "player/pictures/PlanarFrame.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace stackreel
{

/// The first frames of a range, kept so that a wrap does not wait for the decoder, which has to start at a
/// key frame that may lie far before. If all frames fit, nothing is decoded any more while the range repeats.
struct KeptFrames {
    LoopRange range;
    PictureSize box; ///< what the frames were scaled to fit into
    std::vector<PlanarFramePtr> frames;
    std::size_t outdated = 0; ///< how many of the first frames fit into another box
    std::size_t bytes = 0;
    bool complete = false;
    bool grows = false;  ///< not complete, and the frames behind these are to be added
    Nanoseconds end = 0; ///< of the range, or of what the file has of it; only when complete

    /// Adds the next frame unless that would exceed `budget` bytes. The first second may take three times as
    /// much: a decoder can take that long to get back to the range's start, and large pictures would not
    /// last.
    bool add(const PlanarFramePtr& frame, std::size_t budget);
    /// The frames added from now on fit into `now`.
    void changeBox(PictureSize now)
    {
        if (now != box)
            outdated = frames.size();
        box = now;
    }

    bool fits(PictureSize wanted) const { return box == wanted && outdated == 0; }
    /// The part of the range whose frames have to be decoded again to fit.
    LoopRange lacking(PictureSize wanted) const
    {
        if (box != wanted || outdated == frames.size())
            return range;
        return {range.start, frames[outdated]->time};
    }
    /// These frames with the first ones replaced by those of the part they lacked; none when the two do not
    /// meet.
    std::shared_ptr<const KeptFrames> behind(const KeptFrames& first) const;
    /// These frames for a range with the same start and another end; none when all lie past the new end.
    std::shared_ptr<const KeptFrames> withEnd(Nanoseconds newEnd) const;
};

} // namespace stackreel
