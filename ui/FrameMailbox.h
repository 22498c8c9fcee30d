#pragma once

#include "platform/playback/VideoOutput.h"

#include <functional>
#include <mutex>
#include <optional>

namespace stackreel
{

/// Holds the latest frame of a player until the view takes it. The player presents frames from its own
/// thread, possibly after the view is destroyed. A new frame replaces one that was not taken.
class FrameMailbox : public VideoOutput
{
public:
    /// `changed` is called when a frame arrives in an empty mailbox. It is called on any thread while the
    /// mailbox is locked, so it must not call the mailbox.
    explicit FrameMailbox(std::function<void()> changed) : m_changed(std::move(changed)) {}

    void present(VideoFrame frame) noexcept override;
    void clear() noexcept override;

    /// Takes the frame that arrived since the last call: one without pixels means that the view should be
    /// cleared. Returns nothing when no frame arrived. Any thread.
    std::optional<VideoFrame> take();
    /// Drops the held frame and all later ones. After this call `changed` is not called any more. Any thread.
    void close();

private:
    void put(VideoFrame frame);

    std::mutex m_lock;
    std::function<void()> m_changed;
    std::optional<VideoFrame> m_latest;
};

} // namespace stackreel
