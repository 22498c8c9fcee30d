#pragma once

#include "model/ModelServices.h"
#include "model/UnfinishedTasks.h"

#include <filesystem>
#include <memory>

namespace stackreel
{

class AppModel;
class Phase;
class PreviewPlayback;

/// Turns the current editing state into a written file. Owns the running export's handle. Main thread.
class ExportFlow
{
public:
    ExportFlow(AppModel& model, const ModelServices& services, PreviewPlayback& playback);

    /// Shows the save panel while a loaded source can be exported; a chosen destination starts the export.
    void chooseExportDestination();
    /// The export that can be cancelled, or none. When a cancelled export ends, this also resets the handle
    /// of the export that replaced it.
    const std::shared_ptr<TaskHandle>& task() const { return m_exportTask; }
    /// Every export that was started and has not ended, in order, also those that `task` no longer returns.
    UnfinishedTasks::Tasks unfinishedTasks() const { return m_unfinished.list(); }

private:
    void startExport(const std::filesystem::path& source, const std::filesystem::path& destination,
                     const MediaInfo& media);
    /// Ends in the phase `complete`; `failed` with the error's message; or, when cancelled, `ready` with the
    /// destination deleted. The preview plays afterwards in each case.
    QCoro::Task<> exportVideo(std::filesystem::path source, std::filesystem::path destination,
                              MediaInfo media, std::stop_token stop);
    ExportRequest snapshot(const std::filesystem::path& source, const std::filesystem::path& destination,
                           const MediaInfo& media) const;
    void finish(const Phase& phase);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    std::shared_ptr<TaskHandle> m_exportTask;
    UnfinishedTasks m_unfinished;
};

} // namespace stackreel
