#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"
#include "tests/model/walk/ModelWalk.h"

#include <algorithm>
#include <fstream>

namespace stackreel
{

namespace
{

void write(const std::filesystem::path& file, const std::string& content)
{
    std::ofstream(file) << content;
}

} // namespace

void ModelWalk::showSavePanel()
{
    const std::size_t shown = m_services.savePanel->timesShown();
    // Only one panel is shown at a time.
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
    const auto destinations = std::exchange(m_destinations, {});
    if (destinations.empty())
        return;
    if (ExpectedExport* shown = m_expected.shownExport())
        shown->stopRequested = true;
    // Choosing another source, or another destination, supersedes an export that has not begun.
    if (m_chosen)
        return;
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
            // The export was stopped while it waited.
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
    std::function<void()> end = [&] {
        std::filesystem::remove(file); // as the service does
        call.task().fail(CancellationError());
    };
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

void ModelWalk::cancelBackgroundExport()
{
    runQueue();
    const auto exports = m_model->backgroundExports();
    if (exports.empty())
        return;
    const BackgroundExport& chosen = exports[m_random.below(exports.size())];
    note("cancel a background export to " + chosen.destination.filename().string());
    auto position = &chosen - exports.data();
    for (ExpectedExport& item : m_expected.exports)
        if (!item.ended && &item != m_expected.shownExport() && position-- == 0)
            item.stopRequested = true;
    chosen.task->cancel();
}

} // namespace stackreel
