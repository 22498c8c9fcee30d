#include "platform/gstreamer/PlayerEngine.h"

#include "platform/gstreamer/ThreadReaper.h"

#include <stdexcept>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

constexpr std::size_t keptBytes = 64U << 20;
/// Work done before looking at the orders again.
constexpr int stepsPerTurn = 8;
/// How long a player that lost its item keeps the picture and the decoder, for the next range of the file.
constexpr auto closingDelay = 150ms;
/// How long the size has to stand before frames are gathered in it.
constexpr auto sizeSettles = 300ms;
/// Playing that would reach the range's end sooner than this waits for the first frames to be gathered.
constexpr Nanoseconds bridgedByQueue = 3 * second / 2;

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

void PlayerEngine::order(const std::function<void(PlayerOrders&)>& change)
{
    {
        const std::lock_guard lock(m_mutex);
        change(m_ordered);
    }
    m_wakeUp.notify();
}

PlayerOrders PlayerEngine::takeOrders()
{
    const std::lock_guard lock(m_mutex);
    return m_ordered;
}

void PlayerEngine::run()
{
    while (true) {
        tendEnd(); // first, for what was ordered after the end is to be obeyed after it
        const PlayerOrders orders = takeOrders();
        if (orders.quit)
            break;
        obey(orders);
        tendSeek();
        const bool more = feed();
        tendHead();
        tendRunning();
        tendForeground();
        tendSound();
        if (!more)
            m_wakeUp.wait(nextDeadline());
    }
    m_presenter.setOutput(nullptr);
    closeLoop();
    m_foreground.reset();
}

void PlayerEngine::obey(const PlayerOrders& orders)
{
    obeyLoop(orders);
    obeyBox(orders.box);
    obeySeek(orders);
    m_orders = orders;
}

void PlayerEngine::obeyLoop(const PlayerOrders& orders)
{
    if (!orders.loop) {
        if (m_orders.loop) {
            m_presenter.hold();
            m_feeder.reset();
            m_closing = std::chrono::steady_clock::now() + closingDelay;
        } else if (m_closing && *m_closing <= std::chrono::steady_clock::now()) {
            m_presenter.clear(orders.seek.number);
            closeLoop();
        }
        return;
    }
    if (!m_orders.loop || m_orders.loop->number != orders.loop->number) {
        openLoop(*orders.loop);
    } else if (m_orders.loop->repeating && !orders.loop->repeating && m_feeder) {
        m_feeder->stopRepeating();
        if (m_presenter.endAfterThisRun())
            m_feeder->finish();
    }
}

void PlayerEngine::openLoop(const PlayerOrders::Loop& loop)
{
    m_closing.reset();
    m_filler.reset();
    m_feeder.reset();
    m_fillerUseless = false;
    m_seeks.abandon();
    try {
        if (!m_reader || m_failed || m_readerFile != loop.file) {
            m_reader.reset();
            m_reader = std::make_unique<FrameReader>(loop.file, m_orders.box, [this] { m_wakeUp.notify(); });
            m_readerFile = loop.file;
        }
        m_failed = false;
        m_feeder = std::make_unique<LoopFeeder>(*m_reader, loop.range, keptBytes);
        if (!loop.repeating)
            m_feeder->stopRepeating();
        m_sound.open(loop.file, loop.range);
    } catch (const std::runtime_error&) {
        m_reader.reset();
        giveUp();
    }
}

void PlayerEngine::closeLoop()
{
    m_closing.reset();
    m_filler.reset();
    m_feeder.reset();
    m_reader.reset();
    m_seeks.clear();
}

void PlayerEngine::obeyBox(PictureSize box)
{
    if (m_reader && m_reader->box() != box) {
        m_reader->setBox(box);
        m_boxSince = std::chrono::steady_clock::now();
        // Standing still, the picture is made again in its new size.
        if (m_feeder && !m_presenter.isRunning() && m_seeks.isIdle())
            m_seeks.want({m_presenter.position(), m_orders.seek.number}, m_boxSince);
    }
}

void PlayerEngine::obeySeek(const PlayerOrders& orders)
{
    if (orders.seek.number == m_orders.seek.number || !orders.loop)
        return;
    m_seeks.want(orders.seek, std::chrono::steady_clock::now());
}

void PlayerEngine::tendSeek()
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
        if (!m_seeks.isFlying() && !m_presenter.hasRoom(m_feeder->replaysAll()))
            return false;
        QueuedFrame frame;
        switch (m_feeder->step(frame)) {
        case LoopFeeder::Step::frame:
            deliver(std::move(frame));
            break;
        case LoopFeeder::Step::failed:
            giveUp();
            return false;
        case LoopFeeder::Step::working:
            break;
        default:
            return false;
        }
    }
    return true;
}

void PlayerEngine::deliver(QueuedFrame frame)
{
    if (m_seeks.isFlying() && frame.frame) {
        m_sound.jump(frame);
        m_presenter.jump(std::move(frame), m_seeks.land());
    } else {
        m_sound.follow(frame);
        m_presenter.push(std::move(frame));
    }
}

/// The file shows nothing, and nothing is tried until the next order.
void PlayerEngine::giveUp()
{
    m_failed = true;
    m_seeks.clear();
    m_presenter.clear(m_orders.seek.number);
}

void PlayerEngine::tendHead()
{
    if (m_filler && m_filler->isOver()) {
        const auto kept = m_filler->result();
        m_fillerUseless = !kept;
        if (kept && m_feeder)
            m_feeder->adopt(kept);
        m_filler.reset();
    }
    if (!m_feeder || m_failed || m_seeks.isFlying() || !m_orders.playing || !m_feeder->needsHead()) {
        if (m_filler && (!m_feeder || !m_orders.playing || !m_feeder->needsHead()))
            m_filler.reset();
        return;
    }
    const bool settled = std::chrono::steady_clock::now() - m_boxSince >= sizeSettles;
    if (m_filler && m_filler->box() != m_reader->box())
        m_filler.reset();
    if (!m_filler && !m_fillerUseless && settled && m_orders.loop && m_orders.loop->repeating)
        m_filler = std::make_unique<HeadFiller>(m_readerFile, m_feeder->range(), m_reader->box(), keptBytes,
                                                [this] { m_wakeUp.notify(); });
}

/// Starting shortly before the range's end, the loop would stand still there until its first frames are
/// decoded; it does so before starting instead, where the picture stands still anyway.
bool PlayerEngine::mustWaitForHead() const
{
    return m_filler && !m_presenter.isRunning() &&
           m_feeder->range().end - m_presenter.position() < bridgedByQueue;
}

void PlayerEngine::tendRunning()
{
    const bool ready = m_feeder && !m_failed && m_seeks.isIdle();
    if (ready && m_orders.playing && m_feeder->parked()) {
        m_seeks.want({m_feeder->range().start, m_orders.seek.number}, std::chrono::steady_clock::now());
        m_wakeUp.notify();
        return;
    }
    if (m_feeder || !m_orders.playing)
        m_presenter.setRunning(ready && m_orders.playing && !mustWaitForHead());
}

/// While somebody waits for a frame, thumbnails have to.
void PlayerEngine::tendForeground()
{
    if (!m_seeks.isFlying())
        m_foreground.reset();
    else if (!m_foreground)
        m_foreground.emplace();
}

/// Somewhere to hear it is only looked for while there is something to be heard.
void PlayerEngine::tendSound()
{
    const bool audible = m_feeder && !m_failed && m_orders.playing && !m_orders.muted;
    if (std::exchange(m_audible, audible) != audible)
        m_sound.setAudible(audible);
}

/// What happens as playing reaches its end, once.
void PlayerEngine::tendEnd()
{
    const bool ended = m_presenter.hasEnded() && m_seeks.isIdle() && m_orders.loop;
    if (std::exchange(m_ended, ended) == ended || !ended)
        return;
    if (m_orders.atEnd == QueuePlayer::ActionAtItemEnd::advance) {
        m_presenter.clear(m_orders.seek.number);
        closeLoop();
    } else if (m_orders.atEnd == QueuePlayer::ActionAtItemEnd::pause) {
        order([](PlayerOrders& orders) { orders.playing = false; });
    }
}

std::optional<Clock::Instant> PlayerEngine::nextDeadline() const
{
    if (m_closing)
        return m_closing;
    if (const auto deadline = m_seeks.deadline())
        return deadline;
    if (m_feeder && m_orders.playing && m_feeder->needsHead() && !m_filler && !m_fillerUseless)
        return std::max(m_boxSince + sizeSettles, std::chrono::steady_clock::now() + 50ms);
    return std::nullopt;
}

} // namespace stackreel
