// What the player's engine sees to on every turn, besides its orders and the frames themselves.

#include "player/engine/PlayerEngine.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

/// How long the size has to stand before frames are gathered in it.
constexpr auto sizeSettles = 300ms;
/// Playing that would reach the range's end sooner than this waits for the first frames to be gathered.
constexpr Nanoseconds bridgedByQueue = 3 * second / 2;
/// How long a range repeats from memory before the decoder is let go; opening it again takes some 50 ms.
constexpr auto decoderRests = 3s;

} // namespace

void PlayerEngine::tendHead()
{
    if (m_filler && m_feeder &&
        (m_filler->box() != m_reader->box() || m_filler->range() != m_feeder->headRange()))
        m_filler.reset(); // it gathers what is not needed any more
    if (m_filler && m_filler->isOver()) {
        const auto kept = m_filler->result();
        m_fillerUseless = !kept || (m_feeder && !m_feeder->adopt(kept));
        if (m_feeder && m_fillerUseless)
            m_feeder->dropOutdated();
        m_filler.reset();
    }
    if (!m_feeder || m_failed || m_seeks.isFlying() || !m_orders.playing || !m_feeder->needsHead()) {
        if (m_filler && (!m_feeder || !m_orders.playing || !m_feeder->needsHead()))
            m_filler.reset();
        return;
    }
    const bool settled = std::chrono::steady_clock::now() - m_boxSince >= sizeSettles;
    if (settled && wantsHead())
        startFiller();
}

void PlayerEngine::startFiller()
{
    try {
        m_filler = std::make_unique<HeadFiller>(m_file, m_feeder->headRange(), m_reader->box(), keptBytes,
                                                [this] { m_wakeUp.notify(); });
    } catch (const std::system_error&) {
        m_fillerUseless = true; // no thread is to be had; the range begins again as well as it can
        m_feeder->dropOutdated();
    }
}

/// Whether the range's first frames are still to be gathered.
bool PlayerEngine::wantsHead() const
{
    return m_feeder && !m_failed && m_orders.playing && m_orders.loop && m_orders.loop->repeating &&
           m_feeder->needsHead() && !m_filler && !m_fillerUseless;
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

/// Whether a frame was ordered that has not been begun to be fetched. With the lock held.
bool PlayerEngine::isFrameAwaited() const
{
    return m_ordered.loop && m_ordered.seek.number != m_obeyed;
}

/// While somebody waits for a frame, thumbnails have to.
void PlayerEngine::tendForeground()
{
    const std::lock_guard lock(m_mutex);
    m_obeyed = m_orders.seek.number;
    if (!m_seeks.isFlying() && !isFrameAwaited())
        m_foreground.reset();
    else if (!m_foreground)
        m_foreground.emplace();
}

/// A range that repeats from memory needs no decoder, which holds a dozen whole pictures.
void PlayerEngine::tendDecoder()
{
    if (!m_feeder || !m_feeder->replaysAll() || !m_presenter.isRunning()) {
        m_replayingSince.reset();
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (!m_replayingSince)
        m_replayingSince = now;
    if (now - *m_replayingSince >= decoderRests)
        m_reader->rest();
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
        // After a seek or a loop that was ordered in the meantime, playback continues.
        order([last = m_orders.seek.number](PlayerOrders& orders) {
            if (orders.seek.number == last)
                orders.playing = false;
        });
    }
}

std::optional<Clock::Instant> PlayerEngine::nextDeadline() const
{
    std::optional<Clock::Instant> next = m_closing;
    const auto consider = [&next](std::optional<Clock::Instant> other) {
        if (other && (!next || *other < *next))
            next = other;
    };
    if (m_feeder && !m_failed) {
        // A seek that lands in `feed` may leave another one waiting, and nobody wakes this thread for that.
        consider(m_seeks.deadline());
        consider(m_feeder->deadline());
    }
    if (wantsHead())
        consider(std::max(m_boxSince + sizeSettles, std::chrono::steady_clock::now() + 50ms));
    return next;
}

} // namespace stackreel
