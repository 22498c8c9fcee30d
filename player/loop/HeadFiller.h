#pragma once

#include "player/loop/KeptFrames.h"
#include "player/loop/LoopRange.h"
#include "player/pictures/PictureSize.h"
#include "player/source/SourceFile.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace stackreel
{

/// Gathers the first frames of a range with a decoder of its own, while the player shows another part of it.
class HeadFiller
{
public:
    /// Begins at once, on another thread. `wake` is called there when it is over, unless this object is gone.
    HeadFiller(SourceFile file, LoopRange range, PictureSize box, std::size_t budget,
               std::function<void()> wake);
    HeadFiller(const HeadFiller&) = delete;
    HeadFiller& operator=(const HeadFiller&) = delete;
    /// Does not wait; what was begun ends by itself.
    ~HeadFiller();

    LoopRange range() const;
    PictureSize box() const;
    bool isOver() const;
    /// The frames, once it is over; none when the file showed none.
    std::shared_ptr<const KeptFrames> result() const;

private:
    struct Job;
    std::shared_ptr<Job> m_job;
};

} // namespace stackreel
