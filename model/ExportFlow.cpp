#include "model/ExportFlow.h"

#include "desktop/panels/SavePanel.h"
#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/AppModel.h"
#include "model/ExportFileName.h"
#include "model/ExportQueue.h"
#include "model/PreviewPlayback.h"

#include <QPointer>

#include <utility>

namespace stackreel
{

namespace
{

/// Waits for the turn of an export. Throws `CancellationError` also where the model no longer exists then.
QCoro::Task<ExportTurn> takeTurn(std::shared_ptr<ExportQueue> queue, QPointer<AppModel> model,
                                 std::stop_token stop)
{
    auto turn = co_await ExportQueue::takeTurn(std::move(queue), std::move(stop));
    if (!model)
        throw CancellationError();
    co_return turn;
}

QString notExported(const std::filesystem::path& file, const QString& reason)
{
    return QStringLiteral("%1 was not exported. %2")
        .arg(QString::fromStdString(file.filename().string()), reason);
}

/// The message for the end of an export to `file`. `phase` is its result: `complete`, `failed`, or `ready` if
/// it was cancelled.
QString endMessage(const std::filesystem::path& file, const Phase& phase)
{
    if (phase.kind() == Phase::Kind::ready)
        return notExported(file, QString::fromStdString(MediaToolError::cancelled().errorDescription()));
    const QString message = QString::fromStdString(phase.message(std::nullopt));
    return phase.kind() == Phase::Kind::complete ? message : notExported(file, message);
}

} // namespace

ExportFlow::ExportFlow(AppModel& model, const ModelServices& services, PreviewPlayback& playback)
    : m_model(model), m_services(services), m_playback(playback), m_queue(std::make_shared<ExportQueue>())
{
}

void ExportFlow::chooseExportDestination()
{
    if (!m_model.sourceURL() || !m_model.mediaInfo() || !m_model.phase().isEditable())
        return;
    const SavePanelRequest request = {
        .title = "Export vertical video",
        .prompt = "Export",
        .defaultName = exportFileName(*m_model.sourceURL()),
        .canCreateDirectories = true,
        .allowedContentTypes = {ContentType::mp4},
        .source = *m_model.sourceURL(),
    };
    const Job job = {.source = *m_model.sourceURL(), .destination = {}, .media = *m_model.mediaInfo()};
    const auto start = [this, job, replaced = m_replacedSources](const std::filesystem::path& destination) {
        if (replaced == m_replacedSources)
            startExport(job, destination);
        else
            Q_EMIT m_model.exportOfReplacedSourceEnded(
                notExported(destination, QStringLiteral("Another video was opened in the meantime.")));
    };
    m_services.savePanel->begin(request, [model = QPointer(&m_model), start](const PanelResponse& response) {
        if (!model || !response.accepted || !response.url)
            return;
        QMetaObject::invokeMethod(
            model, [start, destination = *response.url] { start(destination); }, Qt::QueuedConnection);
    });
}

void ExportFlow::sourceReplaced()
{
    ++m_replacedSources;
    if (!m_exportTask)
        return;
    m_exportTask.reset();
    Q_EMIT m_model.backgroundExportsChanged();
}

std::vector<BackgroundExport> ExportFlow::backgroundExports() const
{
    auto exports = m_begun;
    std::erase_if(exports, [this](const BackgroundExport& each) { return each.task == m_exportTask; });
    return exports;
}

void ExportFlow::removeBegun(unsigned number)
{
    std::erase_if(m_begun, [number](const BackgroundExport& each) { return each.number == number; });
}

void ExportFlow::startExport(Job job, const std::filesystem::path& destination)
{
    if (m_exportTask)
        m_exportTask->cancel();
    job.number = ++m_lastExport;
    job.destination = destination;
    m_exportTask = TaskHandle::start(
        m_model, [this, job](std::stop_token stop) { return exportAndNotify(job, std::move(stop)); });
    m_unfinished.add(m_exportTask);
    Q_EMIT m_model.unfinishedExportsChanged();
    Q_EMIT m_model.backgroundExportsChanged();
}

ExportRequest ExportFlow::snapshot(const Job& job) const
{
    return {.input = job.source,
            .output = job.destination,
            .media = job.media,
            .top = m_model.topRegion(),
            .bottom = m_model.bottomRegion(),
            .settings = m_model.settings(),
            .trimStart = m_model.trimStart(),
            .trimEnd = m_model.trimEnd()};
}

QCoro::Task<> ExportFlow::exportAndNotify(Job job, std::stop_token stop)
{
    const QPointer model(&m_model);
    co_await exportVideo(std::move(job), std::move(stop));
    if (!model)
        co_return;
    Q_EMIT model->backgroundExportsChanged();
    Q_EMIT model->unfinishedExportsChanged();
}

QCoro::Task<> ExportFlow::exportVideo(Job job, std::stop_token stop)
{
    if (!isShown(job))
        co_return;
    const QPointer model(&m_model);
    const auto queue = m_queue;
    const auto exportSource = m_services.exportSource;
    m_begun.push_back({.number = job.number, .destination = job.destination, .task = m_exportTask});
    m_model.setPhase(Phase::exporting());
    m_playback.pause();
    auto request = snapshot(job);
    Phase outcome = Phase::ready();
    try {
        const WaitForTurn waitForTurn = [queue, model, stop] { return takeTurn(queue, model, stop); };
        co_await exportSource(std::move(request), waitForTurn, stop);
        outcome = Phase::complete(job.destination);
    } catch (const CancellationError&) {
        outcome = Phase::ready();
    } catch (const std::exception& error) {
        outcome = Phase::failed(error.what());
    }
    if (!model)
        co_return;
    removeBegun(job.number);
    if (isShown(job))
        finish(outcome);
    else
        Q_EMIT model->exportOfReplacedSourceEnded(endMessage(job.destination, outcome));
}

void ExportFlow::finish(const Phase& phase)
{
    m_model.setPhase(phase);
    m_playback.play();
    m_exportTask.reset();
}

} // namespace stackreel
