#include "player/playout/Presenter.h"

#include "system/ThreadScheduling.h"

#include <algorithm>
#include <utility>

namespace stackreel
{

namespace
{

/// After a longer delay the machine has stalled, and the clock is set back instead of frames being skipped.
constexpr Nanoseconds resyncThreshold = second / 4;

MediaTime toMediaTime(Nanoseconds time)
{
    return MediaTime::fromSeconds(toSeconds(time));
}

} // namespace

Presenter::Presenter(std::shared_ptr<TimeObservers> observers, std::function<void()> wake)
    : m_observers(std::move(observers)), m_wake(std::move(wake)), m_thread([this] { run(); })
{
}

Presenter::~Presenter()
{
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Presenter::jump(QueuedFrame frame, std::uint64_t jump)
{
    const auto now = std::chrono::steady_clock::now();
    {
        const std::lock_guard lock(m_mutex);
        m_queue.clear();
        m_clock->set(frame.due, now);
        m_current = std::move(frame);
        m_jump = jump;
        m_repaint = true;
        m_clear = false;
    }
    m_changed.notify_all();
}

void Presenter::push(QueuedFrame frame)
{
    const auto now = std::chrono::steady_clock::now();
    {
        const std::lock_guard lock(m_mutex);
        if (m_queue.empty() && m_clock->isRunning() && m_clock->at(now) > frame.due)
            m_clock->set(frame.due, now);
        m_queue.push(std::move(frame));
    }
    m_changed.notify_all();
}

void Presenter::setRunning(bool running)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_clock->isRunning() == running)
            return;
        m_clock->setRunning(running, std::chrono::steady_clock::now());
    }
    m_changed.notify_all();
}

void Presenter::hold()
{
    const std::lock_guard lock(m_mutex);
    m_current.position = positionAt(std::chrono::steady_clock::now());
    m_clock->setRunning(false, std::chrono::steady_clock::now());
    m_clock->set(m_current.due, std::chrono::steady_clock::now());
    m_queue.clear();
}

std::vector<QueuedFrame> Presenter::decoded() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_current.frame)
        return {};
    std::vector<QueuedFrame> frames = m_queue.ofRun(m_current.iteration);
    frames.insert(frames.begin(), m_current);
    return frames;
}

void Presenter::clear(std::uint64_t jump)
{
    {
        const std::lock_guard lock(m_mutex);
        m_clock->setRunning(false, std::chrono::steady_clock::now());
        m_queue.clear();
        m_current = {};
        m_jump = jump;
        m_repaint = false;
        m_clear = true;
    }
    m_changed.notify_all();
}

bool Presenter::hasRoom(bool replayed) const
{
    const std::lock_guard lock(m_mutex);
    return m_queue.hasRoom(replayed);
}

bool Presenter::isRunning() const
{
    const std::lock_guard lock(m_mutex);
    return m_clock->isRunning();
}

Nanoseconds Presenter::position() const
{
    const std::lock_guard lock(m_mutex);
    return positionAt(std::chrono::steady_clock::now());
}

void Presenter::setOutput(std::shared_ptr<VideoOutput> output)
{
    if (!m_output.replace(std::move(output)))
        return;
    const std::lock_guard lock(m_mutex);
    m_repaint = m_current.frame != nullptr;
    m_changed.notify_all();
}

void Presenter::run()
{
    requestShortTimeSlice();
    Lock lock(m_mutex);
    while (!m_quit) {
        if (std::exchange(m_clear, false)) {
            m_preparedFrom.reset();
            m_prepared = {};
            m_observers->reportJump(MediaTime::indefinite(), m_jump, std::chrono::steady_clock::now());
            lock.unlock();
            m_output.show({});
            lock.lock();
        } else if (std::exchange(m_repaint, false)) {
            repaint(lock);
        } else if (!present(lock, std::chrono::steady_clock::now())) {
            waitForWork(lock);
        }
    }
}

/// Shows the current frame after a jump or on a new output.
void Presenter::repaint(Lock& lock)
{
    const PlanarFramePtr frame = m_current.frame;
    const auto now = std::chrono::steady_clock::now();
    lock.unlock();
    if (frame) {
        m_prepared = m_rgb.convert(*frame);
        m_preparedFrom = frame;
        m_output.show(m_prepared);
    }
    lock.lock();
    if (frame == m_current.frame)
        m_observers->reportJump(toMediaTime(positionAt(now)), m_jump, now);
}

/// Shows the next frame when it is due, and reports the time to observers when they are due. False when there
/// is nothing to do now.
bool Presenter::present(Lock& lock, Clock::Instant now)
{
    if (!m_clock->isRunning())
        return false;
    if (!m_queue.empty() && m_clock->when(m_queue.front().due) <= now) {
        QueuedFrame next = m_queue.pop();
        if (m_clock->at(now) - next.due > resyncThreshold)
            m_clock->set(next.due, now);
        m_current = std::move(next);
        const PlanarFramePtr frame = m_current.frame;
        lock.unlock();
        if (m_preparedFrom != frame)
            m_prepared = m_rgb.convert(*frame);
        m_preparedFrom = frame;
        m_output.show(m_prepared);
        m_wake();
        lock.lock();
        return true;
    }
    if (m_observers->nextCall() <= now) {
        m_observers->reportProgress(toMediaTime(positionAt(now)), m_jump, now);
        return true;
    }
    prepare(lock);
    return false;
}

/// Converts the next frame ahead of its time, so that it is shown without delay.
void Presenter::prepare(Lock& lock)
{
    if (m_queue.empty() || m_queue.front().frame == m_preparedFrom)
        return;
    const PlanarFramePtr frame = m_queue.front().frame;
    lock.unlock();
    m_prepared = m_rgb.convert(*frame);
    m_preparedFrom = frame;
    lock.lock();
}

void Presenter::waitForWork(Lock& lock)
{
    // Something may have changed while a frame was prepared.
    if (m_quit || m_repaint || m_clear)
        return;
    if (!m_clock->isRunning()) {
        m_changed.wait(lock);
        return;
    }
    Clock::Instant until = m_observers->nextCall();
    if (!m_queue.empty())
        until = std::min(until, m_clock->when(m_queue.front().due));
    if (until == Clock::Instant::max())
        m_changed.wait(lock);
    else
        m_changed.wait_until(lock, until);
}

Nanoseconds Presenter::positionAt(Clock::Instant now) const
{
    Nanoseconds sinceDue = std::max<Nanoseconds>(m_clock->at(now) - m_current.due, 0);
    if (m_queue.empty() && m_current.frame)
        sinceDue = std::min(sinceDue, m_current.frame->duration); // the next frame is late
    return m_current.position + sinceDue;
}

} // namespace stackreel
