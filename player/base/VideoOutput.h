#pragma once

#include "player/base/VideoFrame.h"

namespace stackreel
{

/// Where a player puts its pictures. Owned together by the view that shows them and the player they come
/// from.
class VideoOutput
{
public:
    virtual ~VideoOutput() = default;

    /// The next picture to show, handed over at the moment it is due. Called on a thread of the player's;
    /// must return at once and not throw.
    virtual void present(VideoFrame frame) noexcept = 0;
    /// Nothing is to be shown any more (the player lost its item or this output was replaced). Any thread.
    virtual void clear() noexcept = 0;
};

} // namespace stackreel
