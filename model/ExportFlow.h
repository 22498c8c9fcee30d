#pragma once

#include "model/BackgroundExport.h"
#include "model/ModelServices.h"
#include "model/UnfinishedTasks.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace stackreel
{

class AppModel;
class ExportQueue;
class Phase;
class PreviewPlayback;

/// Exports the loaded source with the current crops, trim and settings. Owns the task handles of the exports.
/// Main thread.
///
/// Exports run one at a time. An export that is started before another one has ended waits for its turn, in
/// the phase `exporting`. If the source of an export is replaced, the export continues, but does not change
/// the phase any more. It is then a background export until its end, which is a signal
/// (`AppModel::exportOfReplacedSourceEnded`).
class ExportFlow
{
public:
    ExportFlow(AppModel& model, const ModelServices& services, PreviewPlayback& playback);

    /// Shows the save panel if a loaded source can be exported. The export starts when the user chooses a
    /// destination, unless the source has been replaced in the meantime.
    void chooseExportDestination();
    /// Call this when another source begins to load.
    void sourceReplaced();
    /// The export of the current source, which is running or waiting and can be cancelled, or null.
    const std::shared_ptr<TaskHandle>& task() const { return m_exportTask; }
    /// All exports that have not ended, in the order of their start, including those of sources that were
    /// replaced.
    UnfinishedTasks::Tasks unfinishedTasks() const { return m_unfinished.list(); }
    /// The exports that have begun and are not `task`, in the order of their start.
    std::vector<BackgroundExport> backgroundExports() const;

private:
    struct Job {
        unsigned number = 0; ///< the number of the export, from 1
        std::filesystem::path source;
        std::filesystem::path destination;
        MediaInfo media;
    };

    void startExport(Job job, const std::filesystem::path& destination);
    /// Does nothing when the export is superseded before it begins. Otherwise it ends in the phase
    /// `complete`; `failed` with the error's message; or, when cancelled, `ready`. The preview plays
    /// afterwards in each case.
    QCoro::Task<> exportVideo(Job job, std::stop_token stop);
    QCoro::Task<> exportAndNotify(Job job, std::stop_token stop);
    ExportRequest snapshot(const Job& job) const;
    /// Whether the window shows this export: neither its source nor the export itself has been replaced.
    bool isShown(const Job& job) const { return m_exportTask && job.number == m_lastExport; }
    void finish(const Phase& phase);
    void removeBegun(unsigned number);

    AppModel& m_model;
    ModelServices m_services;
    PreviewPlayback& m_playback;
    std::shared_ptr<ExportQueue> m_queue;
    unsigned m_replacedSources = 0; ///< counts the calls of `sourceReplaced`
    unsigned m_lastExport = 0;
    std::shared_ptr<TaskHandle> m_exportTask;
    UnfinishedTasks m_unfinished;
    std::vector<BackgroundExport> m_begun; ///< the exports that run or wait, including `m_exportTask`
};

} // namespace stackreel
