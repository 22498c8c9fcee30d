#pragma once

#include "framing/CropRegion.h"
#include "framing/ExportSettings.h"
#include "media/MediaInfo.h"
#include "model/BackgroundExport.h"
#include "model/ModelServices.h"
#include "model/Phase.h"

#include <QObject>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

class CropSetup;
class ExportFlow;
class PreviewPlayback;
class PreviewPlayer;
class SourceLoading;
class TaskHandle;

/// The state of the window's work, and the operations on it. One object per window; main thread only.
///
/// Setting a published property, even to an equal value, emits `objectWillChange` before the value changes
/// and the property's own signal after that. Views may read and write all of these properties, with one
/// exception: they change the trim range and the playhead through the operations, which keep 0 ≤ trimStart ≤
/// currentTime ≤ trimEnd.
///
/// `SourceLoading`, `PreviewPlayback`, `ExportFlow` and `CropSetup` implement the operations; each owns the
/// state for its operations that is not published. Work that is still running when the model is destroyed
/// does not change anything after that.
class AppModel : public QObject
{
    Q_OBJECT
public:
    explicit AppModel(ModelServices services, QObject* parent = nullptr);
    ~AppModel() override;

    const Phase& phase() const { return m_phase; }
    void setPhase(Phase phase);
    const std::optional<std::filesystem::path>& sourceURL() const { return m_sourceURL; }
    void setSourceURL(std::optional<std::filesystem::path> url);
    const std::optional<MediaInfo>& mediaInfo() const { return m_mediaInfo; }
    void setMediaInfo(std::optional<MediaInfo> info);
    const std::shared_ptr<PreviewPlayer>& player() const { return m_player; }
    void setPlayer(std::shared_ptr<PreviewPlayer> player);
    const std::vector<VideoFrame>& timelineThumbnails() const { return m_timelineThumbnails; }
    void setTimelineThumbnails(std::vector<VideoFrame> images);
    double currentTime() const { return m_currentTime; } ///< seconds, as are the trim points
    void setCurrentTime(double seconds);
    double trimStart() const { return m_trimStart; }
    void setTrimStart(double seconds);
    double trimEnd() const { return m_trimEnd; }
    void setTrimEnd(double seconds);
    bool previewPlaying() const { return m_previewPlaying; }
    void setPreviewPlaying(bool playing);
    const CropRegion& topRegion() const { return m_topRegion; }
    void setTopRegion(const CropRegion& region);
    const CropRegion& bottomRegion() const { return m_bottomRegion; }
    void setBottomRegion(const CropRegion& region);
    const ExportSettings& settings() const { return m_settings; }
    void setSettings(const ExportSettings& settings);
    int selectedCrop() const { return m_selectedCrop; } ///< 0 is the top region, 1 the bottom one
    void setSelectedCrop(int index);
    bool previewMuted() const { return m_previewMuted; }
    /// Each call also mutes or unmutes the player, if there is one.
    void setPreviewMuted(bool muted);

    /// The status line, UTF-8.
    std::string phaseMessage() const;
    /// The export of the current source that is running or waiting for its turn, or null. No signal is
    /// emitted when it changes.
    std::shared_ptr<TaskHandle> exportTask() const;
    /// All exports that have not ended, including those of sources that were replaced.
    /// `unfinishedExportsChanged` is emitted after each start, and just before each end; with a queued
    /// connection, the slot runs after the end.
    std::vector<std::shared_ptr<TaskHandle>> unfinishedExports() const;
    /// The exports that have begun and that are not `exportTask`, in the order of their start. Their source
    /// was replaced, or a later export of the same source superseded them.
    std::vector<BackgroundExport> backgroundExports() const;
    /// All loads that have not ended, including those that were cancelled because another source was chosen.
    /// No signal is emitted when the list changes.
    std::vector<std::shared_ptr<TaskHandle>> unfinishedLoads() const;

    void chooseSource();
    void adaptRegionsToCurrentOutput();
    void customDimensionsChanged();
    void swapCrops();

    void togglePreviewPlayback();
    void seekPreview(double seconds);
    void updateTrimStart(double seconds);
    void updateTrimEnd(double seconds);
    void beginTimelineInteraction();
    void endTimelineInteraction(bool rebuildLoop);
    /// Ends an interaction that moved a trim handle by a step. The loop restarts at the start of the trim
    /// range, and plays if the preview was playing before the interaction.
    void endTimelineStep();

    void chooseExportDestination();

Q_SIGNALS:
    void objectWillChange();
    void phaseChanged();
    void sourceURLChanged();
    void mediaInfoChanged();
    void playerChanged();
    void timelineThumbnailsChanged();
    void currentTimeChanged();
    void trimStartChanged();
    void trimEndChanged();
    void previewPlayingChanged();
    void topRegionChanged();
    void bottomRegionChanged();
    void settingsChanged();
    void selectedCropChanged();
    void previewMutedChanged();
    void unfinishedExportsChanged();
    /// May also be emitted when the list is the same as before.
    void backgroundExportsChanged();
    /// A background export is complete, has failed or was cancelled, or an export did not start because its
    /// source was replaced while the save panel was open. `phase` does not show that. `message` is a sentence
    /// for the user.
    void exportOfReplacedSourceEnded(const QString& message);

private:
    template <typename Value>
    void publish(Value& field, Value value, void (AppModel::*changed)());

    Phase m_phase = Phase::empty();
    std::optional<std::filesystem::path> m_sourceURL;
    std::optional<MediaInfo> m_mediaInfo;
    std::shared_ptr<PreviewPlayer> m_player;
    std::vector<VideoFrame> m_timelineThumbnails;
    double m_currentTime = 0;
    double m_trimStart = 0;
    double m_trimEnd = 0;
    bool m_previewPlaying = false;
    CropRegion m_topRegion = {.x = 0.04, .y = 0.14, .width = 0.44, .height = 0.72};
    CropRegion m_bottomRegion = {.x = 0.52, .y = 0.14, .width = 0.44, .height = 0.72};
    ExportSettings m_settings;
    int m_selectedCrop = 0;
    bool m_previewMuted = true;

    std::unique_ptr<PreviewPlayback> m_playback;
    std::unique_ptr<CropSetup> m_crops;
    std::unique_ptr<ExportFlow> m_export;
    std::unique_ptr<SourceLoading> m_loading;
};

} // namespace stackreel
