#include "player/engine/PlayerEngine.h"

#include "player/base/ThreadReaper.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

/// Work done before looking at the orders again.
constexpr int stepsPerTurn = 8;
/// How long a player that lost its item keeps the picture and the decoder, for the next range of the file.
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

void PlayerEngine::order(const std::function<void(PlayerOrders&)>& change)
{
    {
        const std::lock_guard lock(m_mutex);
        change(m_ordered);
        if (isFrameAwaited() && !m_foreground)
            m_foreground.emplace();
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
        tendDecoder();
        tendSound();
        if (!more)
            m_wakeUp.wait(nextDeadline());
    }
    m_presenter.setOutput(nullptr);
    closeLoop();
    const std::lock_guard lock(m_mutex);
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
        if (!m_reader || m_failed || m_file.path() != loop.file) {
            m_reader.reset();
            m_file = loop.file;
            m_reader = std::make_unique<FrameReader>(m_file, m_orders.box, [this] { m_wakeUp.notify(); });
        }
        m_failed = false;
        m_feeder = std::make_unique<LoopFeeder>(*m_reader, loop.range, keptBytes);
        if (!loop.repeating)
            m_feeder->stopRepeating();
        m_sound.open(m_file, loop.range);
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
        if (!m_feeder || m_presenter.isRunning() || !m_seeks.isIdle())
            return;
        Nanoseconds shown = m_presenter.position();
        // Behind the end there is another picture, from which a player that plays would begin again.
        if (m_presenter.hasEnded())
            shown = std::max(shown - 2 * halfUnit, m_feeder->range().start);
        m_seeks.want({shown, m_orders.seek.number}, m_boxSince);
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
        switch (takeStep(frame)) {
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

LoopFeeder::Step PlayerEngine::takeStep(QueuedFrame& frame)
{
    try {
        return m_feeder->step(frame);
    } catch (const std::runtime_error&) {
        return LoopFeeder::Step::failed; // what is opened again may lack what it had the first time
    }
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

} // namespace stackreel
