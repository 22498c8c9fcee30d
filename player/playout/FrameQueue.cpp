#include "player/playout/FrameQueue.h"

#include <algorithm>
#include <utility>

namespace stackreel
{

namespace
{

constexpr std::size_t queueBytes = 32U << 20;
constexpr std::size_t fewestFrames = 4;
constexpr std::size_t mostFrames = 90;
/// Frames from memory are queued a few at a time: a range may have as little as one.
constexpr std::size_t replayedFrames = 12;

} // namespace

void FrameQueue::push(QueuedFrame frame)
{
    count(frame, true);
    m_frames.push_back(std::move(frame));
}

QueuedFrame FrameQueue::pop()
{
    QueuedFrame frame = std::move(m_frames.front());
    m_frames.pop_front();
    count(frame, false);
    return frame;
}

std::vector<QueuedFrame> FrameQueue::ofRun(std::uint64_t iteration) const
{
    const auto end = std::find_if(m_frames.begin(), m_frames.end(), [iteration](const QueuedFrame& frame) {
        return frame.iteration != iteration;
    });
    return {m_frames.begin(), end};
}

bool FrameQueue::hasRoom(bool replayed) const
{
    if (replayed)
        return m_frames.size() < replayedFrames;
    return m_decodedFrames < fewestFrames || (m_decodedFrames < mostFrames && m_decodedBytes < queueBytes);
}

void FrameQueue::count(const QueuedFrame& frame, bool comes)
{
    if (frame.kept)
        return;
    if (comes) {
        ++m_decodedFrames;
        m_decodedBytes += frame.frame->bytes();
    } else {
        --m_decodedFrames;
        m_decodedBytes -= frame.frame->bytes();
    }
}

} // namespace stackreel
