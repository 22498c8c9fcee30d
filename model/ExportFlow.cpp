#include "model/ExportFlow.h"

#include "media/CancellationError.h"
#include "model/AppModel.h"
#include "model/ExportFileName.h"
#include "model/PreviewPlayback.h"
#include "platform/panels/SavePanel.h"

#include <QPointer>

#include <system_error>

namespace stackreel
{

ExportFlow::ExportFlow(AppModel& model, const ModelServices& services, PreviewPlayback& playback)
    : m_model(model), m_services(services), m_playback(playback)
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
    };
    m_services.savePanel->begin(request, [this, model = QPointer(&m_model), source = *m_model.sourceURL(),
                                          media = *m_model.mediaInfo()](const PanelResponse& response) {
        if (!model || !response.accepted || !response.url)
            return;
        QMetaObject::invokeMethod(
            model,
            [this, source, destination = *response.url, media] { startExport(source, destination, media); },
            Qt::QueuedConnection);
    });
}

void ExportFlow::startExport(const std::filesystem::path& source, const std::filesystem::path& destination,
                             const MediaInfo& media)
{
    if (m_exportTask)
        m_exportTask->cancel();
    m_exportTask = TaskHandle::start(m_model, [this, source, destination, media](std::stop_token stop) {
        return exportVideo(source, destination, media, std::move(stop));
    });
    m_unfinished.add(m_exportTask);
}

ExportRequest ExportFlow::snapshot(const std::filesystem::path& source,
                                   const std::filesystem::path& destination, const MediaInfo& media) const
{
    return {.input = source,
            .output = destination,
            .media = media,
            .top = m_model.topRegion(),
            .bottom = m_model.bottomRegion(),
            .settings = m_model.settings(),
            .trimStart = m_model.trimStart(),
            .trimEnd = m_model.trimEnd()};
}

QCoro::Task<> ExportFlow::exportVideo(std::filesystem::path source, std::filesystem::path destination,
                                      MediaInfo media, std::stop_token stop)
{
    const QPointer model(&m_model);
    m_model.setPhase(Phase::exporting());
    m_playback.pause();
    auto request = snapshot(source, destination, media);
    const auto exportSource = m_services.exportSource;
    Phase outcome = Phase::ready();
    try {
        co_await exportSource(std::move(request), stop);
        outcome = Phase::complete(destination);
    } catch (const CancellationError&) {
        // A partial file must not survive a cancellation.
        std::error_code ignored;
        std::filesystem::remove(destination, ignored);
    } catch (const std::exception& error) {
        outcome = Phase::failed(error.what());
    }
    if (model)
        finish(outcome);
}

void ExportFlow::finish(const Phase& phase)
{
    m_model.setPhase(phase);
    m_playback.play();
    m_exportTask.reset();
}

} // namespace stackreel
