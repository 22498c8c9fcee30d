#pragma once

#include "platform/playback/VideoOutput.h"

#include <functional>
#include <mutex>
#include <optional>

namespace stackreel
{

/// Holds the latest picture of a player until its view takes it. The player puts pictures in on a thread of
/// its own and may go on doing so after the view is gone; a picture that is not taken in time is replaced.
class FrameMailbox : public VideoOutput
{
public:
    /// `changed` says that there is something to take; once until it is taken. Called on any thread, with the
    /// mailbox locked, so it calls nothing of the mailbox.
    explicit FrameMailbox(std::function<void()> changed) : m_changed(std::move(changed)) {}

    void present(VideoFrame frame) noexcept override;
    void clear() noexcept override;

    /// What came last since the call before: a frame, or one without pixels when nothing is to be shown any
    /// more. None when nothing came. Any thread.
    std::optional<VideoFrame> take();
    /// Throws away what comes from now on; after the call `changed` is not called any more. Any thread.
    void close();

private:
    void put(VideoFrame frame);

    std::mutex m_lock;
    std::function<void()> m_changed;
    std::optional<VideoFrame> m_latest;
};

} // namespace stackreel
