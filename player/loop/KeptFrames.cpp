#include "player/loop/KeptFrames.h"

#include <algorithm>

namespace stackreel
{

namespace
{

std::size_t bytesOf(const std::vector<PlanarFramePtr>& frames)
{
    std::size_t bytes = 0;
    for (const PlanarFramePtr& frame : frames)
        bytes += frame->bytes();
    return bytes;
}

} // namespace

bool KeptFrames::add(const PlanarFramePtr& frame, std::size_t budget)
{
    const bool bridges = frame->time - range.start < second;
    if (bytes + frame->bytes() > (bridges ? 3 * budget : budget))
        return false;
    bytes += frame->bytes();
    frames.push_back(frame);
    return true;
}

std::shared_ptr<const KeptFrames> KeptFrames::behind(const KeptFrames& first) const
{
    if (!first.fits(box) || !first.complete || first.range != lacking(box))
        return nullptr;
    auto joined = std::make_shared<KeptFrames>(*this);
    joined->frames.erase(joined->frames.begin(),
                         joined->frames.begin() + static_cast<std::ptrdiff_t>(outdated));
    joined->frames.insert(joined->frames.begin(), first.frames.begin(), first.frames.end());
    joined->outdated = 0;
    joined->bytes = bytesOf(joined->frames);
    return joined;
}

std::shared_ptr<const KeptFrames> KeptFrames::withEnd(Nanoseconds newEnd) const
{
    auto changed = std::make_shared<KeptFrames>(*this);
    changed->range.end = newEnd;
    const auto past = std::find_if(frames.begin(), frames.end(), [&](const PlanarFramePtr& frame) {
        return changed->range.reachedBy(frame->time);
    });
    if (past == frames.begin())
        return nullptr;
    changed->frames.assign(frames.begin(), past);
    changed->outdated = std::min(outdated, changed->frames.size());
    changed->bytes = bytesOf(changed->frames);
    if (past != frames.end() || (complete && newEnd <= end)) {
        changed->complete = true;
        changed->grows = false;
        changed->end = newEnd;
    } else if (complete && end == range.end) {
        changed->complete = false;
        changed->grows = true;
    }
    return changed;
}

} // namespace stackreel
