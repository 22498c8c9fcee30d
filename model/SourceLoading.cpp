#include "model/SourceLoading.h"

#include "desktop/panels/OpenPanel.h"
#include "model/AppModel.h"
#include "model/CropSetup.h"
#include "model/ExportFlow.h"
#include "model/PreviewPlayback.h"

#include <exception>
#include <utility>

namespace stackreel
{

namespace
{

constexpr int thumbnailCount = 12;

} // namespace

SourceLoading::SourceLoading(AppModel& model, const ModelServices& services, PreviewPlayback& playback,
                             CropSetup& crops, ExportFlow& exports)
    : m_model(model), m_services(services), m_playback(playback), m_crops(crops), m_exports(exports)
{
}

void SourceLoading::chooseSource()
{
    const OpenPanelRequest request = {
        .title = "Choose a horizontal video",
        .prompt = "Choose Video",
        // With `data` the user can choose any file. The probe decides whether it is usable, not the panel.
        .allowedContentTypes = {ContentType::audiovisualContent, ContentType::movie, ContentType::data},
    };
    m_services.openPanel->begin(request, [this, model = QPointer(&m_model)](const PanelResponse& response) {
        if (!model || !response.accepted || !response.url)
            return;
        startLoad(*response.url);
    });
}

void SourceLoading::startLoad(const std::filesystem::path& url)
{
    for (const auto& superseded : m_unfinished.list())
        superseded->cancel();
    m_unfinished.add(TaskHandle::start(
        m_model, [this, url](std::stop_token stop) { return loadSource(url, std::move(stop)); }));
}

QCoro::Task<> SourceLoading::loadSource(std::filesystem::path url, std::stop_token stop)
{
    if (stop.stop_requested())
        co_return; // superseded before it began
    const QPointer model(&m_model);
    const ModelServices services = m_services;
    m_exports.sourceReplaced();
    m_model.setPhase(Phase::preparing());
    resetForSource(url);
    try {
        const MediaInfo media = co_await services.inspect(url, stop);
        if (!model || stop.stop_requested())
            co_return;
        const auto previewURL = co_await services.previewSource(url, stop);
        if (model && !stop.stop_requested())
            showSource(media, previewURL);
    } catch (const std::exception& error) {
        if (model && !stop.stop_requested())
            fail(error.what());
    }
}

void SourceLoading::fail(const std::string& message)
{
    // If creating the player failed, the properties are already published. Reset them.
    if (m_model.mediaInfo())
        resetForSource(*m_model.sourceURL());
    m_model.setPhase(Phase::failed(message));
}

void SourceLoading::resetForSource(const std::filesystem::path& url)
{
    m_model.setSourceURL(url);
    m_model.setMediaInfo(std::nullopt);
    m_model.setTimelineThumbnails({});
    m_model.setTrimStart(0);
    m_model.setTrimEnd(0);
    m_model.setCurrentTime(0);
    if (m_thumbnailTask)
        m_thumbnailTask->cancel();
    m_playback.tearDownPlayer();
}

void SourceLoading::showSource(const MediaInfo& media, const std::filesystem::path& previewURL)
{
    m_model.setMediaInfo(media);
    m_playback.setPreviewURL(previewURL);
    m_model.setTrimEnd(media.duration);
    m_crops.configureRegions(media);
    m_playback.configurePlayer();
    m_model.setPhase(Phase::ready());
    loadTimelineThumbnails(previewURL, media.duration);
}

void SourceLoading::loadTimelineThumbnails(const std::filesystem::path& file, double duration)
{
    if (m_thumbnailTask)
        m_thumbnailTask->cancel();
    const QPointer model(&m_model);
    const auto thumbnails = m_services.timelineThumbnails;
    m_thumbnailTask = TaskHandle::start(
        m_model, [model, thumbnails, file, duration](std::stop_token stop) -> QCoro::Task<> {
            auto images = co_await thumbnails(file, duration, thumbnailCount, stop);
            if (!stop.stop_requested() && model)
                model->setTimelineThumbnails(std::move(images));
        });
}

} // namespace stackreel
