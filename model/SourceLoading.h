#pragma once

#include "model/ModelServices.h"
#include "model/UnfinishedTasks.h"

#include <QPointer>

#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

namespace stackreel
{

class AppModel;
class CropSetup;
class ExportFlow;
class PreviewPlayback;

/// Loads a source into the model, so that it plays and can be edited. Owns the loads and the thumbnail task.
/// Main thread.
///
/// The source that was chosen last is always the one that is loaded, in whichever order the loads end.
/// Otherwise the user would lose work when the load of an earlier choice replaced a source that is being
/// edited. Choosing a source therefore cancels the previous load. A cancelled load ends its child process and
/// does not change the model.
class SourceLoading
{
public:
    SourceLoading(AppModel& model, const ModelServices& services, PreviewPlayback& playback, CropSetup& crops,
                  ExportFlow& exports);

    /// Shows the open panel, and loads the file that the user chooses.
    void chooseSource();
    /// All loads that have not ended, including the superseded ones.
    UnfinishedTasks::Tasks unfinishedTasks() const { return m_unfinished.list(); }

private:
    void startLoad(const std::filesystem::path& url);
    /// Loads a file. After any failure the phase is `failed`. Does not change the model after a stop is
    /// requested or the model is destroyed.
    QCoro::Task<> loadSource(std::filesystem::path url, std::stop_token stop);
    void resetForSource(const std::filesystem::path& url);
    void fail(const std::string& message);
    void showSource(const MediaInfo& media, const std::filesystem::path& previewURL);
    void loadTimelineThumbnails(const std::filesystem::path& file, double duration);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    CropSetup& m_crops;
    ExportFlow& m_exports;
    UnfinishedTasks m_unfinished;
    std::shared_ptr<TaskHandle> m_thumbnailTask;
};

} // namespace stackreel
