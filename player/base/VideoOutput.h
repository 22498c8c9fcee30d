#pragma once

#include "player/base/VideoFrame.h"

namespace stackreel
{

/// The place that a player sends its pictures to. Owned by the view that shows them and by the player.
class VideoOutput
{
public:
    virtual ~VideoOutput() = default;

    /// The next picture, at the moment at which it is due. Called on a thread of the player's; must return at
    /// once.
    virtual void present(VideoFrame frame) noexcept = 0;
    /// Shows nothing any more: the player was closed, or this output was replaced. Any thread.
    virtual void clear() noexcept = 0;
};

} // namespace stackreel
