#pragma once

#include "player/base/VideoOutput.h"

#include <memory>
#include <mutex>

namespace stackreel
{

/// Where a player's pictures go at present, if anywhere, and the picture that is there. Any thread.
class OutputSlot
{
public:
    /// Shows the present picture on `output`, from now on instead of the one before, which is cleared. False
    /// when it is the same one.
    bool replace(std::shared_ptr<VideoOutput> output);
    /// Shows a picture; one without pixels clears.
    void show(const VideoFrame& picture);

private:
    std::mutex m_mutex; ///< held while the output is told something
    std::shared_ptr<VideoOutput> m_output;
    VideoFrame m_shown;
};

} // namespace stackreel
