#pragma once

#include "model/ModelServices.h"
#include "model/UnfinishedTasks.h"

#include <filesystem>
#include <memory>

namespace stackreel
{

class AppModel;
class ExportQueue;
class Phase;
class PreviewPlayback;

/// Turns the current editing state into a written file. Owns the handles of the exports. Main thread.
///
/// Exports run one at a time. One that is started while another still ends, or still runs for a source that
/// was replaced, waits its turn in the phase `exporting`. When its source is replaced, an export goes on, but
/// changes nothing in the model any more.
class ExportFlow
{
public:
    ExportFlow(AppModel& model, const ModelServices& services, PreviewPlayback& playback);

    /// Shows the save panel while a loaded source can be exported; a chosen destination starts the export,
    /// unless the source was replaced since.
    void chooseExportDestination();
    /// To be called when another source begins to load.
    void sourceReplaced();
    /// The export of the model's source that runs or waits and can be cancelled, or none.
    const std::shared_ptr<TaskHandle>& task() const { return m_exportTask; }
    /// Every export that was started and has not ended, in order, also those of sources that were replaced.
    UnfinishedTasks::Tasks unfinishedTasks() const { return m_unfinished.list(); }

private:
    struct Job {
        unsigned number = 0; ///< counts the exports
        std::filesystem::path source;
        std::filesystem::path destination;
        MediaInfo media;
    };

    void startExport(Job job, const std::filesystem::path& destination);
    /// Does nothing when the export is superseded before it begins. Otherwise it ends in the phase
    /// `complete`; `failed` with the error's message; or, when cancelled, `ready` with the destination
    /// deleted. The preview plays afterwards in each case.
    QCoro::Task<> exportVideo(Job job, std::stop_token stop);
    QCoro::Task<> exportAndNotify(Job job, std::stop_token stop);
    ExportRequest snapshot(const Job& job) const;
    /// Whether the window shows this export: its source and itself were not replaced.
    bool isShown(const Job& job) const { return m_exportTask && job.number == m_lastExport; }
    void finish(const Phase& phase);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    std::shared_ptr<ExportQueue> m_queue;
    unsigned m_replacedSources = 0; ///< counts the calls of `sourceReplaced`
    unsigned m_lastExport = 0;
    std::shared_ptr<TaskHandle> m_exportTask;
    UnfinishedTasks m_unfinished;
};

} // namespace stackreel
