#include "player/engine/PlayerEngine.h"

#include "player/base/DetachedThreads.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

/// Steps of the feeder before the request is read again.
constexpr int stepsPerTurn = 8;
/// A player without an item keeps the picture and the decoder for this long, for the next range of the file.
constexpr auto closingDelay = 150ms;

} // namespace

PlayerEngine::PlayerEngine(std::shared_ptr<TimeObservers> observers, MakeSoundSink makeSoundSink)
    : m_presenter(std::move(observers), [this] { m_wakeUp.notify(); }),
      m_sound(std::move(makeSoundSink), m_presenter.clock())
{
}

void PlayerEngine::start(const std::shared_ptr<PlayerEngine>& engine)
{
    runDetached([engine] { engine->run(); });
}

void PlayerEngine::request(const std::function<void(PlayerRequest&)>& change)
{
    {
        const std::lock_guard lock(m_mutex);
        change(m_requested);
        if (isFrameAwaited() && !m_foreground)
            m_foreground.emplace();
    }
    m_wakeUp.notify();
}

PlayerRequest PlayerEngine::requested()
{
    const std::lock_guard lock(m_mutex);
    return m_requested;
}

void PlayerEngine::run()
{
    while (true) {
        handleEnd(); // before the request is read: it holds what was requested after the end
        const PlayerRequest request = requested();
        if (request.quit)
            break;
        apply(request);
        startSeek();
        const bool more = feed();
        updateHead();
        updateRunning();
        updateForeground();
        releaseIdleDecoder();
        updateSound();
        if (!more)
            m_wakeUp.wait(nextDeadline());
    }
    m_presenter.setOutput(nullptr);
    closeLoop();
    const std::lock_guard lock(m_mutex);
    m_foreground.reset();
}

void PlayerEngine::apply(const PlayerRequest& request)
{
    applyLoop(request);
    applyBox(request.box);
    applySeek(request);
    m_applied = request;
}

void PlayerEngine::applyLoop(const PlayerRequest& request)
{
    if (!request.loop) {
        if (m_applied.loop) {
            m_presenter.hold();
            m_feeder.reset();
            m_closing = std::chrono::steady_clock::now() + closingDelay;
        } else if (m_closing && *m_closing <= std::chrono::steady_clock::now()) {
            m_presenter.clear(request.seek.number);
            closeLoop();
        }
        return;
    }
    if (!m_applied.loop || m_applied.loop->number != request.loop->number) {
        openLoop(*request.loop);
    } else if (m_applied.loop->repeating && !request.loop->repeating && m_feeder) {
        m_feeder->stopRepeating();
        if (m_presenter.endAfterThisRun())
            m_feeder->finish();
    }
}

void PlayerEngine::openLoop(const PlayerRequest::Loop& loop)
{
    m_closing.reset();
    m_prefetch.reset();
    m_feeder.reset();
    m_prefetchFailed = false;
    m_seeks.dropInFlight();
    try {
        if (!m_reader || m_failed || m_file.path() != loop.file) {
            m_reader.reset();
            m_file = loop.file;
            m_reader = std::make_unique<FrameReader>(m_file, m_applied.box, [this] { m_wakeUp.notify(); });
        }
        m_failed = false;
        m_feeder = std::make_unique<LoopFeeder>(*m_reader, loop.range, keptBytes);
        if (!loop.repeating)
            m_feeder->stopRepeating();
        m_sound.open(m_file, loop.range);
    } catch (const std::runtime_error&) {
        m_reader.reset();
        fail();
    }
}

void PlayerEngine::closeLoop()
{
    m_closing.reset();
    m_prefetch.reset();
    m_feeder.reset();
    m_reader.reset();
    m_seeks.clear();
}

void PlayerEngine::applyBox(PictureSize box)
{
    if (m_reader && m_reader->box() != box) {
        m_reader->setBox(box);
        m_boxSince = std::chrono::steady_clock::now();
        // While the player is paused, show the same picture in its new size.
        if (!m_feeder || m_presenter.isRunning() || !m_seeks.isIdle())
            return;
        Nanoseconds shown = m_presenter.position();
        // At the end's own time there is another picture, outside the range, and playback would wrap.
        if (m_presenter.hasEnded())
            shown = std::max(shown - 2 * halfUnit, m_feeder->range().start);
        m_seeks.request({shown, m_applied.seek.number}, m_boxSince);
    }
}

void PlayerEngine::applySeek(const PlayerRequest& request)
{
    if (request.seek.number == m_applied.seek.number || !request.loop)
        return;
    m_seeks.request(request.seek, std::chrono::steady_clock::now());
}

void PlayerEngine::startSeek()
{
    if (!m_feeder || m_failed)
        return;
    if (const auto seek = m_seeks.begin(std::chrono::steady_clock::now())) {
        m_presenter.hold();
        m_feeder->beginAt(seek->time);
    }
}

/// True when there is more to do at once.
bool PlayerEngine::feed()
{
    if (!m_feeder || m_failed)
        return false;
    for (int i = 0; i < stepsPerTurn; ++i) {
        if (!m_seeks.isInFlight() && !m_presenter.hasRoom(m_feeder->replaysAll()))
            return false;
        QueuedFrame frame;
        switch (takeStep(frame)) {
        case LoopFeeder::Step::frame:
            deliver(std::move(frame));
            break;
        case LoopFeeder::Step::failed:
            fail();
            return false;
        case LoopFeeder::Step::working:
            break;
        default:
            return false;
        }
    }
    return true;
}

LoopFeeder::Step PlayerEngine::takeStep(QueuedFrame& frame)
{
    try {
        return m_feeder->step(frame);
    } catch (const std::runtime_error&) {
        return LoopFeeder::Step::failed; // the file was opened again, and an element is missing now
    }
}

void PlayerEngine::deliver(QueuedFrame frame)
{
    if (m_seeks.isInFlight() && frame.frame) {
        m_sound.jump(frame);
        m_presenter.jump(std::move(frame), m_seeks.complete());
    } else {
        m_sound.follow(frame);
        m_presenter.push(std::move(frame));
    }
}

/// The file shows nothing. Nothing is tried until the next loop.
void PlayerEngine::fail()
{
    m_failed = true;
    m_seeks.clear();
    m_presenter.clear(m_applied.seek.number);
}

} // namespace stackreel
