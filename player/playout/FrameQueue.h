#pragma once

#include "player/loop/QueuedFrame.h"

#include <cstddef>
#include <deque>

namespace stackreel
{

/// The frames that are to be shown next, in the order they are due, within bounds of memory. A plain value.
class FrameQueue
{
public:
    bool empty() const { return m_frames.empty(); }
    const QueuedFrame& front() const { return m_frames.front(); }
    void push(QueuedFrame frame);
    QueuedFrame pop();
    void clear() { *this = {}; }

    /// Whether so few frames are queued that more are wanted; `replayed` when they come from memory.
    bool hasRoom(bool replayed) const;

private:
    void count(const QueuedFrame& frame, bool comes);

    std::deque<QueuedFrame> m_frames;
    std::size_t m_decodedFrames = 0; ///< those that are in memory for the queue only
    std::size_t m_decodedBytes = 0;
};

} // namespace stackreel
