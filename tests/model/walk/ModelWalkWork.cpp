#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"
#include "tests/model/walk/ModelWalk.h"
#include "tests/support/TemporaryDirectory.h"

#include <QCoreApplication>

#include <algorithm>
#include <fstream>

namespace stackreel
{

namespace
{

/// The number in "/clips/7.mov".
int clipNumber(const std::filesystem::path& file)
{
    return std::stoi(file.stem().string());
}

/// Facts from which the clip can be told.
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

void write(const std::filesystem::path& file, const std::string& content)
{
    std::ofstream(file) << content;
}

} // namespace

template <typename T>
std::size_t ModelWalk::randomPending(const FakeServices::Calls<T>& calls)
{
    std::vector<std::size_t> pending;
    for (std::size_t index = 0; index < calls.size(); ++index)
        if (!calls[index].hasEnded())
            pending.push_back(index);
    return pending.empty() ? noCall : pending[m_random.below(pending.size())];
}

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
        if (!late) {
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
    // The pictures are as wide as the clip, so that they can be told.
    const std::string preview = call.arguments().substr(0, call.arguments().find(','));
    const auto number = std::stoul(preview.substr(preview.find('-') + 1));
    const int width = static_cast<int>(factsOf(m_services.previews[number].arguments()).width);
    std::vector<VideoFrame> images(m_random.below(13));
    for (VideoFrame& image : images)
        image.width = width;
    const bool late = m_chosen || preview != m_expected.previewFile || !m_expected.isLoaded();
    expectSilence(late && call.isCancelled(), [&] { call.task().complete(images); });
}

void ModelWalk::showSavePanel()
{
    const std::size_t shown = m_services.savePanel->timesShown();
    // One panel is shown at a time.
    if (m_savePanelSource && m_model->phase().isEditable())
        m_services.savePanel->answer({.accepted = false, .url = std::nullopt});
    note("show the save panel");
    m_model->chooseExportDestination();
    if (m_services.savePanel->timesShown() != shown)
        m_savePanelSource = m_expected.source;
}

void ModelWalk::answerSavePanel()
{
    if (!m_savePanelSource)
        return;
    const unsigned source = *m_savePanelSource;
    m_savePanelSource.reset();
    if (m_random.chance(10)) {
        note("dismiss the save panel");
        m_services.savePanel->answer({.accepted = false, .url = std::nullopt});
        return;
    }
    const auto destination = m_folder / ("out-" + std::to_string(m_random.below(4)) + ".mp4");
    note("export to " + destination.filename().string());
    m_services.savePanel->choose(destination);
    if (source == m_expected.source && !m_chosen)
        m_destinations.push_back(destination);
}

void ModelWalk::beginExports()
{
    // Choosing another source, or another destination, supersedes an export that has not begun.
    const auto destinations = std::exchange(m_destinations, {});
    if (m_chosen || destinations.empty())
        return;
    if (ExpectedExport* shown = m_expected.shownExport())
        shown->stopRequested = true;
    const ExportRequest request = {.input = *m_model->sourceURL(),
                                   .output = destinations.back(),
                                   .media = *m_model->mediaInfo(),
                                   .top = m_model->topRegion(),
                                   .bottom = m_model->bottomRegion(),
                                   .settings = m_model->settings(),
                                   .trimStart = m_model->trimStart(),
                                   .trimEnd = m_model->trimEnd()};
    m_expected.exports.push_back({.request = request, .source = m_expected.source});
    m_expected.phase = Phase::exporting();
}

void ModelWalk::takeNextTurn()
{
    for (ExpectedExport& item : m_expected.exports) {
        if (item.ended)
            continue;
        const bool begun = item.call != noCall;
        if (!begun && item.stopRequested) {
            // It was stopped while it waited.
            if (&item == m_expected.shownExport())
                m_expected.phase = Phase::ready();
            item.ended = true;
        }
    }
}

void ModelWalk::adoptCalls()
{
    std::size_t known = 0;
    for (const ExpectedExport& item : m_expected.exports)
        known += item.call != noCall ? 1 : 0;
    for (std::size_t call = known; call < m_services.exports.size(); ++call) {
        const auto next = std::find_if(m_expected.exports.begin(), m_expected.exports.end(),
                                       [](const ExpectedExport& item) { return !item.ended; });
        const ExportRequest& request = m_services.exportRequests[call];
        write(request.output, "half");
        if (next == m_expected.exports.end() || next->call != noCall || !(next->request == request)) {
            m_broken.push_back("turn: export " + std::to_string(call + 1) + " began");
            return;
        }
        next->call = call;
    }
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

void ModelWalk::endExport()
{
    runQueue();
    const std::size_t index = randomPending(m_services.exports);
    const auto item = std::find_if(m_expected.exports.begin(), m_expected.exports.end(),
                                   [&](const ExpectedExport& each) { return each.call == index; });
    if (index == noCall || item == m_expected.exports.end())
        return;
    auto& call = m_services.exports[index];
    const bool late = &*item != m_expected.shownExport();
    note("end export " + std::to_string(index + 1));
    const auto file = item->request.output;
    Phase outcome = Phase::ready();
    std::function<void()> end = [&] { call.task().fail(CancellationError()); };
    if (!call.isCancelled() || m_random.chance(20)) {
        if (m_random.chance(70)) {
            write(file, "whole");
            outcome = Phase::complete(file);
            end = [&] { call.task().complete(file); };
        } else {
            outcome = Phase::failed("FFmpeg could not process this video.");
            end = [&] { call.task().fail(MediaToolError::processFailed("FFmpeg", 1, "")); };
        }
    }
    item->ended = true;
    if (!late)
        m_expected.phase = outcome;
    expectSilence(late, end);
    if (outcome == Phase::ready() && std::filesystem::exists(file))
        m_broken.push_back("stopped: a partial file is left");
}

void ModelWalk::cancelExport()
{
    const auto task = m_model->exportTask();
    if (m_model->phase().kind() != Phase::Kind::exporting || !task)
        return;
    note("cancel the export");
    if (ExpectedExport* shown = m_expected.shownExport(); shown != nullptr && m_destinations.empty())
        shown->stopRequested = true;
    else
        return;
    task->cancel();
}

} // namespace stackreel
