// What the engine brings up to date in each turn, besides applying requests and feeding frames.

#include "player/engine/PlayerEngine.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

/// The size has to stay the same for this long before frames are prefetched in it.
constexpr auto sizeSettles = 300ms;
/// When less than this is left until the range's end, playback starts after the prefetch of its first frames.
constexpr Nanoseconds coveredByQueue = 3 * second / 2;

} // namespace

void PlayerEngine::updateHead()
{
    if (m_prefetch && m_feeder &&
        (m_prefetch->box() != m_reader->box() || m_prefetch->range() != m_feeder->headRange()))
        m_prefetch.reset(); // the frames that it decodes are not needed any more
    if (m_prefetch && m_prefetch->isFinished()) {
        const auto kept = m_prefetch->result();
        m_prefetchFailed = !kept || (m_feeder && !m_feeder->adopt(kept));
        if (m_feeder && m_prefetchFailed)
            m_feeder->dropOutdated();
        m_prefetch.reset();
    }
    if (!m_feeder || m_failure || m_seeks.isInFlight() || !m_applied.playing || !m_feeder->needsHead()) {
        if (m_prefetch && (!m_feeder || !m_applied.playing || !m_feeder->needsHead()))
            m_prefetch.reset();
        return;
    }
    const bool settled = std::chrono::steady_clock::now() - m_boxSince >= sizeSettles;
    if (settled && wantsHead())
        startPrefetch();
}

void PlayerEngine::startPrefetch()
{
    try {
        m_prefetch = std::make_unique<HeadPrefetch>(m_file, m_feeder->headRange(), m_reader->box(), keptBytes,
                                                    [this] { m_wakeUp.notify(); });
    } catch (const std::system_error&) {
        m_prefetchFailed = true; // no thread can be started; the wrap may stall
        m_feeder->dropOutdated();
    }
}

/// Whether the range's first frames are missing, and nothing prefetches them.
bool PlayerEngine::wantsHead() const
{
    return m_feeder && !m_failure && m_applied.playing && m_feeder->needsHead() && !m_prefetch &&
           !m_prefetchFailed;
}

/// Playback that starts shortly before the range's end would stall at the wrap until the range's first frames
/// are decoded. It waits for them before it starts, while the picture stands still anyway.
bool PlayerEngine::waitsForHead() const
{
    return m_prefetch && !m_presenter.isRunning() &&
           m_feeder->range().end - m_presenter.position() < coveredByQueue;
}

void PlayerEngine::updateRunning()
{
    const bool ready = m_feeder && !m_failure && m_seeks.isIdle();
    if (ready && m_applied.playing && m_feeder->parked()) {
        m_seeks.request({m_feeder->range().start, m_applied.seek.number}, std::chrono::steady_clock::now());
        m_wakeUp.notify();
        return;
    }
    const bool runs = ready && m_applied.playing && !waitsForHead();
    if (runs)
        m_reusesDecoded = false; // frames that were shown are gone
    if (m_feeder || !m_applied.playing)
        m_presenter.setRunning(runs);
}

/// Whether a frame was requested whose seek has not begun. With the lock held.
bool PlayerEngine::isFrameAwaited() const
{
    return m_requested.loop && m_requested.seek.number != m_appliedSeek;
}

/// Whether nothing is decoded, and nothing will be before another request or the end of a repeated range.
bool PlayerEngine::isDecoderIdle() const
{
    if (!m_reader || m_reader->isReleased() || !m_feeder)
        return false;
    if (m_failure)
        return true;
    if (m_presenter.isRunning())
        return m_feeder->replaysAll();
    const bool isFull = m_feeder->parked() || !m_presenter.hasRoom(m_feeder->replaysAll());
    return !m_applied.playing && m_seeks.isIdle() && isFull;
}

/// A decoder holds a dozen whole pictures, and an open file keeps its disk from being ejected. What is queued
/// stays, so that playback goes on at once, while the file is opened again.
void PlayerEngine::releaseIdleDecoder()
{
    if (!isDecoderIdle()) {
        m_idleSince.reset();
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (!m_idleSince)
        m_idleSince = now;
    if (now - *m_idleSince >= m_delays.idle) {
        m_reader->releaseDecoder();
        m_idleSince.reset();
    }
}

/// The sound device is opened only while sound can be heard.
void PlayerEngine::updateSound()
{
    const bool audible = m_feeder && !m_failure && m_applied.playing && !m_applied.muted;
    if (std::exchange(m_audible, audible) != audible)
        m_sound.setAudible(audible);
}

PlayerState PlayerEngine::currentState() const
{
    using Kind = PlayerState::Kind;
    if (!m_applied.loop)
        return {Kind::empty, {}};
    if (m_failure)
        return {Kind::failed, *m_failure};
    if (!m_seeks.isIdle() || (m_applied.playing && !m_presenter.isRunning()))
        return {Kind::waiting, {}};
    return {m_applied.playing ? Kind::playing : Kind::paused, {}};
}

/// Makes the state known to other threads. Thumbnails wait while a requested frame is missing.
void PlayerEngine::publish()
{
    PlayerState state = currentState();
    const std::lock_guard lock(m_mutex);
    m_state = std::move(state);
    m_appliedSeek = m_applied.seek.number;
    if (!m_seeks.isInFlight() && !isFrameAwaited())
        m_foreground.reset();
    else if (!m_foreground)
        m_foreground.emplace();
}

PlayerState PlayerEngine::state() const
{
    const std::lock_guard lock(m_mutex);
    if (!m_requested.loop)
        return {PlayerState::Kind::empty, {}};
    return isFrameAwaited() ? PlayerState{PlayerState::Kind::waiting, {}} : m_state;
}

std::optional<Clock::Instant> PlayerEngine::nextDeadline() const
{
    std::optional<Clock::Instant> next = m_closing;
    const auto consider = [&next](std::optional<Clock::Instant> other) {
        if (other && (!next || *other < *next))
            next = other;
    };
    if (m_idleSince)
        consider(*m_idleSince + m_delays.idle);
    if (m_feeder && !m_failure) {
        // After a seek completes in `feed`, another one may be pending, and nothing wakes this thread for it.
        consider(m_seeks.deadline());
        if (m_seeks.isInFlight() || m_presenter.hasRoom(m_feeder->replaysAll()))
            consider(m_feeder->deadline());
    }
    if (wantsHead())
        consider(std::max(m_boxSince + sizeSettles, std::chrono::steady_clock::now() + 50ms));
    return next;
}

} // namespace stackreel
