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

/// Takes the model from an empty window to a loaded, playing, editable source. Owns the thumbnail task. Main
/// thread.
class SourceLoading
{
public:
    SourceLoading(AppModel& model, const ModelServices& services, PreviewPlayback& playback,
                  CropSetup& crops);

    /// Shows the open panel; a chosen file is loaded.
    void chooseSource();

private:
    /// Loads a file, step by step; every failure ends in the failed phase. Loads are not cancelled: of two
    /// that overlap, the last to reach a step wins. Stops when the model is gone.
    QCoro::Task<> loadSource(std::filesystem::path url);
    void forgetSource(const std::filesystem::path& url);
    void showSource(const MediaInfo& media, const std::filesystem::path& previewURL);
    void loadTimelineThumbnails(const std::filesystem::path& file, double duration);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    CropSetup& m_crops;
    std::shared_ptr<TaskHandle> m_thumbnailTask;
};

} // namespace stackreel
