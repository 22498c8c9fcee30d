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

PlayerEngine::PlayerEngine(std::shared_ptr<TimeObservers> observers, MakeSoundSink makeSoundSink,
                           PlayerDelays delays)
    : m_delays(delays),
      m_presenter(std::move(observers), [this] { m_wakeUp.notify(); }),
      m_sound(std::move(makeSoundSink), m_presenter.clock(), delays)
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
        const PlayerRequest request = requested();
        if (request.quit)
            break;
        apply(request);
        startSeek();
        const bool more = feed();
        updateHead();
        updateRunning();
        releaseIdleDecoder();
        updateSound();
        publish();
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
    const bool seeks = request.seek.number != m_applied.seek.number;
    // After a failure the next request of a frame opens the file again.
    const bool retries = m_failure && (seeks || (request.playing && !m_applied.playing));
    applyLoop(request, retries);
    applyBox(request.box);
    if (request.loop && (seeks || retries))
        m_seeks.request(request.seek, std::chrono::steady_clock::now());
    m_applied = request;
}

void PlayerEngine::applyLoop(const PlayerRequest& request, bool retries)
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
    if (!m_applied.loop || m_applied.loop->number != request.loop->number || retries)
        openLoop(*request.loop);
}

void PlayerEngine::openLoop(const PlayerRequest::Loop& loop)
{
    m_closing.reset();
    m_prefetch.reset();
    m_prefetchFailed = false;
    m_seeks.dropInFlight();
    try {
        if (!m_reader || m_failure || m_file.path() != loop.file)
            openFile(loop.file);
        m_failure.reset();
        auto feeder = std::make_unique<LoopFeeder>(*m_reader, loop.range, keptBytes);
        if (m_feeder)
            feeder->takeOver(*m_feeder);
        m_feeder = std::move(feeder);
        m_sound.open(m_file, loop.range);
    } catch (const std::runtime_error& error) {
        m_feeder.reset();
        m_reader.reset();
        fail(error.what());
    }
}

void PlayerEngine::openFile(const std::filesystem::path& file)
{
    m_feeder.reset();
    m_reader.reset();
    m_reusesDecoded = false;
    m_file = file;
    m_reader = std::make_unique<FrameReader>(m_file, m_applied.box, [this] { m_wakeUp.notify(); });
}

void PlayerEngine::closeLoop()
{
    m_closing.reset();
    m_prefetch.reset();
    m_feeder.reset();
    m_reader.reset();
    m_failure.reset();
    m_seeks.clear();
}

void PlayerEngine::applyBox(PictureSize box)
{
    if (m_reader && m_reader->box() != box) {
        m_reader->setBox(box);
        m_reusesDecoded = false;
        m_boxSince = std::chrono::steady_clock::now();
        // While the player is paused, show the same picture in its new size.
        if (!m_feeder || m_presenter.isRunning() || !m_seeks.isIdle())
            return;
        m_seeks.request({m_presenter.position(), m_applied.seek.number}, m_boxSince);
    }
}

void PlayerEngine::startSeek()
{
    if (!m_feeder || m_failure)
        return;
    if (const auto seek = m_seeks.begin(std::chrono::steady_clock::now())) {
        const bool reuses = std::exchange(m_reusesDecoded, false);
        auto decoded = reuses ? m_presenter.decoded() : std::vector<QueuedFrame>();
        m_presenter.hold();
        m_feeder->beginAt(seek->time, std::move(decoded));
    }
}

/// True when there is more to do at once.
bool PlayerEngine::feed()
{
    if (!m_feeder || m_failure)
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
            fail(m_reader->failureReason());
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
    } catch (const std::runtime_error& error) {
        fail(error.what()); // the file was opened again, and an element is missing now
        return LoopFeeder::Step::waiting;
    }
}

void PlayerEngine::deliver(QueuedFrame frame)
{
    if (m_seeks.isInFlight()) {
        m_sound.jump(frame);
        m_presenter.jump(std::move(frame), m_seeks.complete());
        m_reusesDecoded = true;
    } else {
        m_sound.follow(frame);
        m_presenter.push(std::move(frame));
    }
}

/// The file shows nothing. Nothing is tried until the next request of a frame.
void PlayerEngine::fail(std::string reason)
{
    m_failure = reason.empty() ? "No picture of the file can be shown." : std::move(reason);
    m_seeks.clear();
    m_reusesDecoded = false;
    m_presenter.clear(m_applied.seek.number);
}

} // namespace stackreel
