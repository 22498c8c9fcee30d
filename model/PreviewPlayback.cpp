#include "model/PreviewPlayback.h"

#include "model/AppModel.h"

#include <QMetaObject>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace stackreel
{

namespace
{

constexpr double frameBeforeEnd = 1.0 / 30;         // how far before the end to seek to show the last frame
constexpr double tick = 1.0 / MediaTime::timescale; // the smallest step inside a range
constexpr double rewindMargin = 0.05;               // play() this close to the end restarts the range
constexpr double observerInterval = 0.05;

} // namespace

PreviewPlayback::PreviewPlayback(AppModel& model, MakePlayer makePlayer)
    : m_model(model), m_makePlayer(std::move(makePlayer))
{
}

void PreviewPlayback::setPreviewURL(const std::filesystem::path& file)
{
    m_previewURL = file;
}

void PreviewPlayback::configurePlayer()
{
    const auto player = m_makePlayer();
    player->setMuted(m_model.previewMuted());
    m_model.setPlayer(player);
    installTimeObserver(*player);
    rebuildPlayerLoop(m_model.trimStart(), true);
}

void PreviewPlayback::tearDownPlayer()
{
    const auto player = m_model.player();
    if (player && m_playerTimeObserver != 0)
        player->removeTimeObserver(m_playerTimeObserver);
    m_playerTimeObserver = 0;
    if (player) {
        player->close();
        player->pause();
    }
    m_model.setPlayer(nullptr);
    m_model.setPreviewPlaying(false);
    if (m_interaction == Interaction::running)
        m_interaction = Interaction::superseded;
}

void PreviewPlayback::play()
{
    if (m_model.player())
        m_model.player()->play();
    m_model.setPreviewPlaying(true);
}

void PreviewPlayback::pause()
{
    if (m_model.player())
        m_model.player()->pause();
    m_model.setPreviewPlaying(false);
}

double PreviewPlayback::minimumTrimDuration() const
{
    if (!m_model.mediaInfo())
        return 0.05;
    return std::min(0.25, std::max(0.05, m_model.mediaInfo()->duration * 0.5));
}

void PreviewPlayback::seekPlayer(double seconds)
{
    if (m_model.player())
        m_model.player()->seek(MediaTime::fromSeconds(seconds));
}

void PreviewPlayback::togglePreviewPlayback()
{
    if (m_model.previewPlaying()) {
        pause();
        return;
    }
    if (m_model.currentTime() >= m_model.trimEnd() - rewindMargin)
        seekPlayer(std::max(m_model.trimStart(), 0.0));
    play();
}

void PreviewPlayback::seekPreview(double seconds)
{
    const double time = std::min(std::max(seconds, m_model.trimStart()), m_model.trimEnd());
    m_model.setCurrentTime(time);
    seekPlayer(std::max(time, 0.0));
}

void PreviewPlayback::updateTrimStart(double seconds)
{
    const double limit = std::max(m_model.trimEnd() - minimumTrimDuration(), 0.0);
    const double start = std::min(std::max(seconds, 0.0), limit);
    m_model.setTrimStart(start);
    m_model.setCurrentTime(start);
    seekPlayer(start);
}

void PreviewPlayback::updateTrimEnd(double seconds)
{
    if (!m_model.mediaInfo())
        return;
    const double earliest = m_model.trimStart() + minimumTrimDuration();
    const double end = std::max(std::min(seconds, m_model.mediaInfo()->duration), earliest);
    m_model.setTrimEnd(end);
    const double playhead = std::max(end - frameBeforeEnd, m_model.trimStart());
    m_model.setCurrentTime(playhead);
    seekPlayer(std::max(playhead, 0.0));
}

void PreviewPlayback::beginTimelineInteraction()
{
    m_interaction = Interaction::running;
    m_resumePlaybackAfterTimelineInteraction = m_model.previewPlaying();
    pause();
}

std::optional<bool> PreviewPlayback::endInteraction()
{
    const bool wasPlaying = std::exchange(m_resumePlaybackAfterTimelineInteraction, false);
    if (std::exchange(m_interaction, Interaction::none) == Interaction::superseded)
        return std::nullopt;
    return wasPlaying;
}

void PreviewPlayback::endTimelineInteraction(bool rebuildLoop)
{
    const auto wasPlaying = endInteraction();
    if (!wasPlaying)
        return;
    if (rebuildLoop)
        rebuildPlayerLoop(m_model.currentTime(), *wasPlaying);
    else if (*wasPlaying)
        play();
}

void PreviewPlayback::endTimelineStep()
{
    if (const auto wasPlaying = endInteraction())
        rebuildPlayerLoop(m_model.trimStart(), *wasPlaying);
}

void PreviewPlayback::rebuildPlayerLoop(double start, bool shouldPlay)
{
    const auto player = m_model.player();
    if (!player || !m_previewURL)
        return;
    const double trimStart = m_model.trimStart();
    const double length = std::max(std::max(m_model.trimEnd() - trimStart, 0.0), minimumTrimDuration());
    const MediaTimeRange range = {.start = MediaTime::fromSeconds(trimStart),
                                  .duration = MediaTime::fromSeconds(length)};
    player->open(*m_previewURL, range);

    // Clamp to one tick before the end, so that the seek lands inside the range.
    const double upper = std::max(m_model.trimEnd() - tick, trimStart);
    const double playhead = std::min(std::max(start, trimStart), upper);
    m_model.setCurrentTime(playhead);
    seekPlayer(std::max(playhead, 0.0));
    if (shouldPlay)
        player->play();
    m_model.setPreviewPlaying(shouldPlay);
}

void PreviewPlayback::installTimeObserver(PreviewPlayer& player)
{
    // A queued call keeps the order of these times and the actions of the user. Qt discards it if the model
    // is destroyed before.
    const std::weak_ptr<PreviewPlayer> observed = m_model.player();
    const auto post = [this, observed, model = QPointer(&m_model)](MediaTime time) {
        const auto update = [this, observed, time] {
            const auto reporting = observed.lock();
            if (reporting && reporting == m_model.player())
                updateCurrentTime(time);
        };
        if (model)
            QMetaObject::invokeMethod(model, update, Qt::QueuedConnection);
    };
    m_playerTimeObserver = player.addPeriodicTimeObserver(MediaTime::fromSeconds(observerInterval), post);
}

void PreviewPlayback::updateCurrentTime(MediaTime time)
{
    const double seconds = time.seconds();
    if (!std::isfinite(seconds))
        return;
    m_model.setCurrentTime(std::min(std::max(seconds, m_model.trimStart()), m_model.trimEnd()));
}

} // namespace stackreel
