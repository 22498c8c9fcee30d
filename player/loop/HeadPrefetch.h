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

/// Decodes the first frames of a range with a decoder of its own, while the player shows another part of it.
class HeadPrefetch
{
public:
    /// Starts at once, on another thread. `wake` is called there at the end, unless this object is destroyed.
    /// Throws `std::system_error` when no thread can be started.
    HeadPrefetch(SourceFile file, LoopRange range, PictureSize box, std::size_t budget,
                 std::function<void()> wake);
    HeadPrefetch(const HeadPrefetch&) = delete;
    HeadPrefetch& operator=(const HeadPrefetch&) = delete;
    /// Does not wait; the thread ends at its next step.
    ~HeadPrefetch();

    LoopRange range() const;
    PictureSize box() const;
    bool isFinished() const;
    /// The frames, once it is finished; none when none could be decoded.
    std::shared_ptr<const KeptFrames> result() const;

private:
    struct Job;
    std::shared_ptr<Job> m_job;
};

} // namespace stackreel
