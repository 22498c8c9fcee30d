#pragma once

#include "player/base/VideoOutput.h"

#include <functional>
#include <mutex>
#include <optional>

namespace stackreel
{

/// Holds the latest frame of a player until the view takes it. The player presents frames on its own thread,
/// even after the view is destroyed. A new frame replaces a frame that was not taken.
class FrameMailbox : public VideoOutput
{
public:
    /// `changed` is called when a frame arrives in an empty mailbox. It is called on any thread while the
    /// mailbox is locked, so it must not call the mailbox.
    explicit FrameMailbox(std::function<void()> changed) : m_changed(std::move(changed)) {}

    void present(VideoFrame frame) noexcept override;
    void clear() noexcept override;

    /// Takes the latest frame. A frame without pixels means that the view should be cleared. Returns
    /// `std::nullopt` if no frame has arrived since the last call. Any thread.
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
