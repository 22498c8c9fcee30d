#include "model/AppModel.h"

#include "model/CropSetup.h"
#include "model/ExportFlow.h"
#include "model/PreviewPlayback.h"
#include "model/SourceLoading.h"
#include "player/PreviewPlayer.h"

#include <utility>

namespace stackreel
{

AppModel::AppModel(ModelServices services, QObject* parent)
    : QObject(parent),
      m_playback(std::make_unique<PreviewPlayback>(*this, services.makePlayer)),
      m_crops(std::make_unique<CropSetup>(*this)),
      m_export(std::make_unique<ExportFlow>(*this, services, *m_playback)),
      m_loading(std::make_unique<SourceLoading>(*this, services, *m_playback, *m_crops, *m_export))
{
}

AppModel::~AppModel() = default;

template <typename Value>
void AppModel::publish(Value& field, Value value, void (AppModel::*changed)())
{
    Q_EMIT objectWillChange();
    field = std::move(value);
    Q_EMIT(this->*changed)();
}

void AppModel::setPhase(Phase phase)
{
    publish(m_phase, std::move(phase), &AppModel::phaseChanged);
}

void AppModel::setSourceURL(std::optional<std::filesystem::path> url)
{
    publish(m_sourceURL, std::move(url), &AppModel::sourceURLChanged);
}

void AppModel::setMediaInfo(std::optional<MediaInfo> info)
{
    publish(m_mediaInfo, std::move(info), &AppModel::mediaInfoChanged);
}

void AppModel::setPlayer(std::shared_ptr<PreviewPlayer> player)
{
    publish(m_player, std::move(player), &AppModel::playerChanged);
}

void AppModel::setTimelineThumbnails(std::vector<VideoFrame> images)
{
    publish(m_timelineThumbnails, std::move(images), &AppModel::timelineThumbnailsChanged);
}

void AppModel::setCurrentTime(double seconds)
{
    publish(m_currentTime, seconds, &AppModel::currentTimeChanged);
}

void AppModel::setTrimStart(double seconds)
{
    publish(m_trimStart, seconds, &AppModel::trimStartChanged);
}

void AppModel::setTrimEnd(double seconds)
{
    publish(m_trimEnd, seconds, &AppModel::trimEndChanged);
}

void AppModel::setPreviewPlaying(bool playing)
{
    publish(m_previewPlaying, playing, &AppModel::previewPlayingChanged);
}

void AppModel::setTopRegion(const CropRegion& region)
{
    publish(m_topRegion, region, &AppModel::topRegionChanged);
}

void AppModel::setBottomRegion(const CropRegion& region)
{
    publish(m_bottomRegion, region, &AppModel::bottomRegionChanged);
}

void AppModel::setSettings(const ExportSettings& settings)
{
    publish(m_settings, settings, &AppModel::settingsChanged);
}

void AppModel::setSelectedCrop(int index)
{
    publish(m_selectedCrop, index, &AppModel::selectedCropChanged);
}

void AppModel::setPreviewMuted(bool muted)
{
    publish(m_previewMuted, muted, &AppModel::previewMutedChanged);
    if (m_player)
        m_player->setMuted(m_previewMuted);
}

std::string AppModel::phaseMessage() const
{
    return m_phase.message(m_sourceURL);
}

std::shared_ptr<TaskHandle> AppModel::exportTask() const
{
    return m_export->task();
}

std::vector<std::shared_ptr<TaskHandle>> AppModel::unfinishedExports() const
{
    return m_export->unfinishedTasks();
}

std::vector<BackgroundExport> AppModel::backgroundExports() const
{
    return m_export->backgroundExports();
}

std::vector<std::shared_ptr<TaskHandle>> AppModel::unfinishedLoads() const
{
    return m_loading->unfinishedTasks();
}

void AppModel::chooseSource()
{
    m_loading->chooseSource();
}

void AppModel::adaptRegionsToCurrentOutput()
{
    m_crops->adaptRegionsToCurrentOutput();
}

void AppModel::customDimensionsChanged()
{
    m_crops->customDimensionsChanged();
}

void AppModel::swapCrops()
{
    m_crops->swapCrops();
}

void AppModel::togglePreviewPlayback()
{
    m_playback->togglePreviewPlayback();
}

void AppModel::seekPreview(double seconds)
{
    m_playback->seekPreview(seconds);
}

void AppModel::updateTrimStart(double seconds)
{
    m_playback->updateTrimStart(seconds);
}

void AppModel::updateTrimEnd(double seconds)
{
    m_playback->updateTrimEnd(seconds);
}

void AppModel::beginTimelineInteraction()
{
    m_playback->beginTimelineInteraction();
}

void AppModel::endTimelineInteraction(bool rebuildLoop)
{
    m_playback->endTimelineInteraction(rebuildLoop);
}

void AppModel::endTimelineStep()
{
    m_playback->endTimelineStep();
}

void AppModel::chooseExportDestination()
{
    m_export->chooseExportDestination();
}

} // namespace stackreel
