#pragma once

#include "player/base/SharedClock.h"
#include "player/base/VideoOutput.h"
#include "player/pictures/RgbConverter.h"
#include "player/playout/FrameQueue.h"
#include "player/playout/OutputSlot.h"
#include "player/playout/TimeObservers.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace stackreel
{

/// Shows queued frames when they are due, on a thread of its own that does nothing else, so that neither
/// seeking nor decoding delays a frame that is queued. When frames come too late, the clock waits for them:
/// every frame is shown.
///
/// All calls may be made on any thread and return at once.
class Presenter
{
public:
    /// `wake` is called when there is room for more frames, on the presenter's thread.
    Presenter(std::shared_ptr<TimeObservers> observers, std::function<void()> wake);
    Presenter(const Presenter&) = delete;
    Presenter& operator=(const Presenter&) = delete;
    ~Presenter();

    /// Drops what is queued, shows `frame` at once, and sets the clock to its due time. `jump` is the number
    /// of the jump, for the observers.
    void jump(QueuedFrame frame, std::uint64_t jump);
    /// Adds a frame that is due later than those before it.
    void push(QueuedFrame frame);
    void setRunning(bool running);
    /// Drops what is queued; the current picture stays, and the clock stands still.
    void hold();
    /// The current frame and those behind it that are queued, up to the end of the run.
    std::vector<QueuedFrame> decoded() const;
    /// Shows nothing any more. Observers get no time.
    void clear(std::uint64_t jump);

    /// Whether more frames can be queued; `replayed` when they come from memory.
    bool hasRoom(bool replayed) const;
    bool isRunning() const;
    /// On the file's time line.
    Nanoseconds position() const;

    void setOutput(std::shared_ptr<VideoOutput> output);
    /// The clock of played time, for the sound.
    std::shared_ptr<const SharedClock> clock() const { return m_clock; }

private:
    using Lock = std::unique_lock<std::mutex>;

    void run();
    bool present(Lock& lock, Clock::Instant now);
    void repaint(Lock& lock);
    void prepare(Lock& lock);
    void waitForWork(Lock& lock);
    Nanoseconds positionAt(Clock::Instant now) const;

    const std::shared_ptr<TimeObservers> m_observers;
    const std::function<void()> m_wake;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    const std::shared_ptr<SharedClock> m_clock = std::make_shared<SharedClock>(); ///< changed under the mutex
    FrameQueue m_queue;
    QueuedFrame m_current;
    std::uint64_t m_jump = 0;
    bool m_repaint = false;
    bool m_clear = false;
    bool m_quit = false;

    // The presenter's thread only.
    RgbConverter m_rgb;
    PlanarFramePtr m_preparedFrom;
    VideoFrame m_prepared;

    OutputSlot m_output;
    std::thread m_thread;
};

} // namespace stackreel
