#include "tests/model/walk/ModelWalk.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

double ModelWalk::randomTime()
{
    const double duration = m_model->mediaInfo() ? m_model->mediaInfo()->duration : 1;
    return m_random.between(-0.5, duration + 0.5);
}

void ModelWalk::grabTimeline()
{
    if (!m_model->phase().isEditable() || m_dragSource)
        return;
    m_grabbed = "sep"[m_random.below(3)];
    m_dragSource = m_expected.source;
    note(std::string("grab ") + m_grabbed);
    m_model->beginTimelineInteraction();
}

void ModelWalk::dragTimeline()
{
    if (m_dragSource != m_expected.source || !m_model->phase().isEditable())
        return;
    const double time = randomTime();
    note("drag to " + described(time));
    if (m_grabbed == 's')
        m_model->updateTrimStart(time);
    else if (m_grabbed == 'e')
        m_model->updateTrimEnd(time);
    else
        m_model->seekPreview(time);
}

void ModelWalk::releaseTimeline()
{
    if (!m_dragSource)
        return;
    const bool late = m_dragSource != m_expected.source;
    note(late ? "release what was grabbed in another source" : "release");
    m_dragSource.reset();
    expectSilence(late, [this] { m_model->endTimelineInteraction(m_grabbed != 'p'); });
}

void ModelWalk::hideTimeline()
{
    // The window hides the timeline when the phase does not allow editing, which ends a drag. At the start of
    // a load, the drag can also end later.
    const bool hidden = !m_model->phase().isEditable();
    if (!hidden || !m_dragSource || (m_model->phase() == Phase::preparing() && m_random.chance(40)))
        return;
    note("hide the timeline");
    m_dragSource.reset();
    m_model->endTimelineInteraction(m_grabbed != 'p');
}

void ModelWalk::stepTimeline()
{
    if (!m_model->phase().isEditable() || m_dragSource)
        return;
    note("step");
    if (m_random.chance(40)) {
        m_model->seekPreview(m_model->currentTime() + m_random.between(-1, 1));
        return;
    }
    m_model->beginTimelineInteraction();
    if (m_random.chance(50))
        m_model->updateTrimStart(m_model->trimStart() + m_random.between(-1, 1));
    else
        m_model->updateTrimEnd(m_model->trimEnd() + m_random.between(-1, 1));
    m_model->endTimelineStep();
}

void ModelWalk::togglePlayback()
{
    // The user can toggle playback only if there is a player: the button is over the picture, and the menu
    // item is disabled without a player.
    if (!m_model->player() || m_dragSource == m_expected.source)
        return;
    note("toggle playback");
    m_model->togglePreviewPlayback();
}

void ModelWalk::mute()
{
    note("mute");
    m_model->setPreviewMuted(m_random.chance(50));
}

void ModelWalk::tick()
{
    const auto& players = m_services.players->all();
    if (players.empty())
        return;
    const auto& player = players.at(m_random.below(players.size()));
    note("tick of " + player->name());
    const MediaTime time =
        m_random.chance(10) ? MediaTime::indefinite() : MediaTime::fromSeconds(randomTime());
    expectSilence(player != m_model->player(), [&] { player->tick(time); });
}

void ModelWalk::moveCrop()
{
    const CropRegion region = CropRegion{.x = m_random.between(-0.2, 1),
                                         .y = m_random.between(-0.2, 1),
                                         .width = m_random.between(0, 1.2),
                                         .height = m_random.between(0, 1.2)}
                                  .clampedToFrame();
    if (!m_model->player())
        return;
    note("move a crop");
    if (m_random.chance(50))
        m_model->setTopRegion(region);
    else
        m_model->setBottomRegion(region);
}

void ModelWalk::selectCrop()
{
    note("select a crop");
    m_model->setSelectedCrop(static_cast<int>(m_random.below(2)));
}

void ModelWalk::swapCrops()
{
    if (!m_model->phase().isEditable())
        return;
    note("swap the crops");
    m_model->swapCrops();
}

void ModelWalk::chooseAspect()
{
    note("choose an aspect");
    ExportSettings settings = m_model->settings();
    constexpr OutputAspect aspects[] = {OutputAspect::portrait, OutputAspect::feed, OutputAspect::square,
                                        OutputAspect::custom};
    settings.aspect = aspects[m_random.below(4)];
    settings.includeAudio = m_random.chance(50);
    m_model->setSettings(settings);
    m_model->adaptRegionsToCurrentOutput();
}

void ModelWalk::typeSize()
{
    note("type a size");
    ExportSettings settings = m_model->settings();
    settings.customWidth = static_cast<std::int64_t>(m_random.below(5000));
    m_model->setSettings(settings);
    m_model->customDimensionsChanged();
}

} // namespace stackreel
