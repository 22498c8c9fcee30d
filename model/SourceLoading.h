#pragma once

#include "model/ModelServices.h"

#include <QPointer>

#include <filesystem>
#include <memory>

namespace stackreel
{

class AppModel;
class CropSetup;
class PreviewPlayback;
class TaskHandle;

/// Loads a source into the model, so that it plays and can be edited. Owns the thumbnail task. Main thread.
class SourceLoading
{
public:
    SourceLoading(AppModel& model, const ModelServices& services, PreviewPlayback& playback,
                  CropSetup& crops);

    /// Shows the open panel; a chosen file is loaded.
    void chooseSource();

private:
    /// Loads a file. Every failure ends in the phase `failed`. A load is not cancelled by another: when two
    /// overlap, the later result overwrites the earlier one. Stops when the model is destroyed.
    QCoro::Task<> loadSource(std::filesystem::path url);
    void resetForSource(const std::filesystem::path& url);
    void showSource(const MediaInfo& media, const std::filesystem::path& previewURL);
    void loadTimelineThumbnails(const std::filesystem::path& file, double duration);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    CropSetup& m_crops;
    std::shared_ptr<TaskHandle> m_thumbnailTask;
};

} // namespace stackreel
