#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"
#include "tests/model/walk/ModelWalk.h"
#include "tests/support/TemporaryDirectory.h"

#include <QCoreApplication>

#include <algorithm>

namespace stackreel
{

namespace
{

/// The number in a path such as "/clips/7.mov".
int clipNumber(const std::filesystem::path& file)
{
    return std::stoi(file.stem().string());
}

/// Properties that differ for each clip.
MediaInfo factsOf(const std::filesystem::path& file)
{
    constexpr double durations[] = {20, 0.2, 0, 3.75, 7200.5, 0.04};
    const int number = clipNumber(file);
    return {.width = 1920 + 2 * number,
            .height = 1080,
            .rotation = 0,
            .duration = durations[number % 6],
            .videoCodec = "h264",
            .audioCodec = "aac"};
}

} // namespace

void ModelWalk::expectSilence(bool late, const std::function<void()>& operation)
{
    if (late)
        runQueue();
    m_services.journal->take();
    operation();
    if (!late)
        return;
    for (const std::string& line : m_services.journal->take())
        m_broken.push_back("late end: " + line);
}

void ModelWalk::showOpenPanel()
{
    note("show the open panel");
    m_model->chooseSource();
    m_openPanelShown = true;
}

void ModelWalk::answerOpenPanel()
{
    if (!m_openPanelShown)
        return;
    m_openPanelShown = false;
    if (m_random.chance(20)) {
        note("dismiss the open panel");
        m_services.openPanel->answer({.accepted = false, .url = std::nullopt});
        return;
    }
    m_chosen = "/clips/" + std::to_string(m_random.below(40)) + ".mov";
    note("choose " + m_chosen->string());
    m_services.openPanel->choose(*m_chosen);
}

void ModelWalk::beginLoad()
{
    if (!m_chosen)
        return;
    ++m_expected.source;
    m_expected.file = std::exchange(m_chosen, std::nullopt);
    m_expected.load = Expected::Load::probing;
    m_expected.inspection = m_services.inspections.size();
    m_expected.preview = noCall;
    m_expected.media.reset();
    m_expected.phase = Phase::preparing();
}

void ModelWalk::endInspection()
{
    const std::size_t index = randomPending(m_services.inspections);
    if (index == noCall)
        return;
    auto& call = m_services.inspections[index];
    const bool late = m_chosen || index != m_expected.inspection;
    note("end inspect " + std::to_string(index + 1));
    const std::size_t previews = m_services.previews.size();
    if (call.isCancelled() && m_random.chance(60)) {
        expectSilence(late, [&] { call.task().fail(CancellationError()); });
    } else if (m_random.chance(15)) {
        if (!late) {
            m_expected.load = Expected::Load::failed;
            m_expected.phase = Phase::failed("This file does not contain a video stream.");
        }
        expectSilence(late, [&] { call.task().fail(MediaToolError::noVideo()); });
    } else {
        if (!late) {
            m_expected.load = Expected::Load::previewing;
            m_expected.preview = previews;
        }
        expectSilence(late, [&] { call.task().complete(factsOf(call.arguments())); });
    }
    if (late && m_services.previews.size() != previews)
        m_broken.push_back("superseded: begins a preview");
}

void ModelWalk::endPreview()
{
    const std::size_t index = randomPending(m_services.previews);
    if (index == noCall)
        return;
    auto& call = m_services.previews[index];
    const bool late = m_chosen || index != m_expected.preview;
    note("end preview " + std::to_string(index + 1));
    if (call.isCancelled() && m_random.chance(60)) {
        expectSilence(late, [&] { call.task().fail(CancellationError()); });
    } else if (m_random.chance(15)) {
        if (!late) {
            m_expected.load = Expected::Load::failed;
            m_expected.phase = Phase::failed("FFmpeg could not process this video.");
        }
        expectSilence(late, [&] { call.task().fail(MediaToolError::processFailed("FFmpeg", 1, "")); });
    } else {
        const std::filesystem::path file = "/tmp/preview-" + std::to_string(index) + ".mp4";
        m_services.players->nextFails = !late && m_random.chance(5);
        if (m_services.players->nextFails) {
            m_expected.load = Expected::Load::failed;
            m_expected.phase = Phase::failed("No thread can be started.");
        } else if (!late) {
            m_expected.load = Expected::Load::done;
            m_expected.media = factsOf(call.arguments());
            m_expected.previewFile = file;
            m_expected.phase = Phase::ready();
        }
        expectSilence(late, [&] { call.task().complete(file); });
    }
}

void ModelWalk::endThumbnails()
{
    const std::size_t index = randomPending(m_services.thumbnails);
    if (index == noCall)
        return;
    auto& call = m_services.thumbnails[index];
    note("end thumbnails " + std::to_string(index + 1));
    // The pictures are as wide as the clip, so that a check can tell to which clip they belong.
    const std::string preview = call.arguments().substr(0, call.arguments().find(','));
    const auto number = std::stoul(preview.substr(preview.find('-') + 1));
    const int width = static_cast<int>(factsOf(m_services.previews[number].arguments()).width);
    std::vector<VideoFrame> images(m_random.below(13));
    for (VideoFrame& image : images)
        image.width = width;
    const bool late = m_chosen || preview != m_expected.previewFile || !m_expected.isLoaded();
    expectSilence(late && call.isCancelled(), [&] { call.task().complete(images); });
}

void ModelWalk::runQueue()
{
    beginExports();
    beginLoad();
    for (int round = 0; round < queueRounds; ++round)
        QCoreApplication::sendPostedEvents();
    adoptCalls();
    takeNextTurn();
}

} // namespace stackreel
