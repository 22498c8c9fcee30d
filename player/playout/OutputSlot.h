#pragma once

#include "player/base/VideoOutput.h"

#include <memory>
#include <mutex>

namespace stackreel
{

/// The output that a player's pictures go to, if any, and the picture on it. Any thread.
class OutputSlot
{
public:
    /// Replaces the output: clears the one before and shows the present picture on the new one. False when
    /// they are the same.
    bool replace(std::shared_ptr<VideoOutput> output);
    /// Shows a picture; one without pixels clears.
    void show(const VideoFrame& picture);

private:
    std::mutex m_mutex; ///< held during calls of the output
    std::shared_ptr<VideoOutput> m_output;
    VideoFrame m_shown;
};

} // namespace stackreel
