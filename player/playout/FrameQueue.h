#pragma once

#include "player/loop/QueuedFrame.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace stackreel
{

/// The frames to be shown next, in the order in which they are due, within limits of memory. A plain value.
class FrameQueue
{
public:
    bool empty() const { return m_frames.empty(); }
    const QueuedFrame& front() const { return m_frames.front(); }
    void push(QueuedFrame frame);
    QueuedFrame pop();
    void clear() { *this = {}; }

    /// The first of the frames that belong to a run.
    std::vector<QueuedFrame> ofRun(std::uint64_t iteration) const;
    /// Whether more frames can be queued; `replayed` when they come from memory.
    bool hasRoom(bool replayed) const;

private:
    void count(const QueuedFrame& frame, bool comes);

    std::deque<QueuedFrame> m_frames;
    std::size_t m_decodedFrames = 0; ///< those that only the queue keeps in memory
    std::size_t m_decodedBytes = 0;
};

} // namespace stackreel
