#include "tests/model/ExportFlowTest.h"

#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace stackreel
{

namespace
{

using ChoosingADestination = ExportFlowTest;
using Exporting = ExportFlowTest;

} // namespace

TEST_F(ChoosingADestination, ShowsAPanelWithTheDefaultName)
{
    model().chooseExportDestination();
    EXPECT_EQ(takeJournal(), Lines{"show save panel"});
    const SavePanelRequest& request = m_services.savePanel->request();
    EXPECT_EQ(request.title, "Export vertical video");
    EXPECT_EQ(request.prompt, "Export");
    EXPECT_EQ(request.defaultName, "Beach day-vertical.mp4");
    EXPECT_TRUE(request.canCreateDirectories);
    EXPECT_EQ(request.allowedContentTypes, std::vector<ContentType>{ContentType::mp4});
}

TEST_F(ChoosingADestination, RemovesOnlyTheLastExtensionFromTheName)
{
    model().setSourceURL("/clips/clip.final.mov");
    model().chooseExportDestination();
    EXPECT_EQ(m_services.savePanel->request().defaultName, "clip.final-vertical.mp4");
}

TEST_F(ChoosingADestination, ShowsAPanelOnlyForAnEditableSource)
{
    struct Row {
        Phase phase;
        bool shows;
    };
    const Row rows[] = {{Phase::empty(), false},         {Phase::preparing(), false},
                        {Phase::ready(), true},          {Phase::exporting(), false},
                        {Phase::complete("/out"), true}, {Phase::failed("x"), false}};
    for (const Row& row : rows) {
        model().setPhase(row.phase);
        takeJournal();
        model().chooseExportDestination();
        EXPECT_EQ(takeJournal(), row.shows ? Lines{"show save panel"} : Lines());
    }
    model().setPhase(Phase::ready());
    model().setMediaInfo(std::nullopt);
    takeJournal();
    model().chooseExportDestination();
    model().setMediaInfo(clip(20));
    model().setSourceURL(std::nullopt);
    takeJournal();
    model().chooseExportDestination();
    EXPECT_EQ(takeJournal(), Lines()) << "facts without a file";
    model().setSourceURL(std::filesystem::path());
    model().chooseExportDestination();
    EXPECT_EQ(m_services.savePanel->timesShown(), 3U) << "an empty path is a path";
}

TEST_F(ChoosingADestination, ChangesNothingWithoutAChoice)
{
    const PanelResponse responses[] = {{.accepted = false, .url = std::nullopt},
                                       {.accepted = false, .url = "/out/a.mp4"},
                                       {.accepted = true, .url = std::nullopt}};
    for (const PanelResponse& response : responses) {
        model().chooseExportDestination();
        takeJournal();
        m_services.savePanel->answer(response);
        runQueuedTasks();
        EXPECT_EQ(takeJournal(), Lines());
        EXPECT_EQ(model().exportTask(), nullptr);
    }
}

TEST_F(ChoosingADestination, DoesNothingAfterTheModelIsDestroyed)
{
    model().chooseExportDestination();
    model().chooseExportDestination();
    m_services.savePanel->choose(destination);
    destroyModel();
    m_services.savePanel->choose(destination);
    runQueuedTasks();
    EXPECT_EQ(m_services.exports.size(), 0U);
}

TEST_F(Exporting, SetsThePropertiesInOrder)
{
    model().chooseExportDestination();
    takeJournal();
    m_services.savePanel->choose(destination);
    EXPECT_EQ(model().exportTask(), nullptr) << "it starts from the event loop";
    runQueuedTasks();
    EXPECT_NE(model().exportTask(), nullptr);
    EXPECT_EQ(takeJournal(), (Lines{"phase exporting", "player 1: pause", "previewPlaying false",
                                    "export 1: /clips/Beach day.MOV to " + destination.string()}));

    exporting().complete(destination);
    EXPECT_EQ(takeJournal(), (Lines{"phase complete: Saved Beach day-vertical.mp4", "player 1: play",
                                    "previewPlaying true"}));
    EXPECT_EQ(model().phase(), Phase::complete(destination));
    EXPECT_EQ(model().exportTask(), nullptr);
}

TEST_F(Exporting, KeepsItsTaskUntilPhaseAndPlaybackAreSet)
{
    startExport();
    std::vector<bool> taskIsSet;
    const auto note = [&] { taskIsSet.push_back(model().exportTask() != nullptr); };
    QObject::connect(&model(), &AppModel::phaseChanged, &model(), note);
    QObject::connect(&model(), &AppModel::previewPlayingChanged, &model(), note);
    exporting().complete(destination);
    EXPECT_EQ(taskIsSet, (std::vector<bool>{true, true}));
    EXPECT_EQ(model().exportTask(), nullptr);
}

TEST_F(Exporting, UsesTheStateAtItsStart)
{
    const CropRegion top = {.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4};
    const CropRegion bottom = {.x = 0.5, .y = 0.1, .width = 0.4, .height = 0.7};
    const ExportSettings settings = {.aspect = OutputAspect::feed, .includeAudio = false};
    model().setTopRegion(top);
    model().setBottomRegion(bottom);
    model().setSettings(settings);
    model().setTrimStart(2);
    model().setTrimEnd(7);
    startExport();
    model().swapCrops();
    model().setSettings({});
    model().setTrimStart(0);
    model().setTrimEnd(1);

    ASSERT_EQ(m_services.exportRequests.size(), 1U);
    const ExportRequest& request = m_services.exportRequests.back();
    EXPECT_EQ(request.input, "/clips/Beach day.MOV");
    EXPECT_EQ(request.output, destination);
    EXPECT_EQ(request.media, clip(20));
    EXPECT_EQ(request.top, top);
    EXPECT_EQ(request.bottom, bottom);
    EXPECT_EQ(request.settings, settings);
    EXPECT_EQ(request.trimStart, 2);
    EXPECT_EQ(request.trimEnd, 7);
}

TEST_F(Exporting, UsesSourceAndFactsFromWhenThePanelWasShown)
{
    model().chooseExportDestination();
    model().setSourceURL("/clips/other.mov");
    model().setMediaInfo(clip(99));
    model().setTrimEnd(50);
    m_services.savePanel->choose(destination);
    runQueuedTasks();
    EXPECT_EQ(m_services.exportRequests.back().input, "/clips/Beach day.MOV");
    EXPECT_EQ(m_services.exportRequests.back().media.duration, 20);
    EXPECT_EQ(m_services.exportRequests.back().trimEnd, 50);
}

TEST_F(Exporting, ReadsTheSourceAndNotThePreview)
{
    choose("/clips/a.mov");
    m_services.inspections.back().task().complete(clip(5));
    m_services.previews.back().task().complete("/tmp/Stackreel/copy.mp4");
    startExport();
    EXPECT_EQ(m_services.exportRequests.back().input, "/clips/a.mov");
}

TEST_F(Exporting, ShowsTheErrorAndKeepsThePartialFileAfterAFailure)
{
    m_directory.write(destination.filename(), "half");
    startExport();
    exporting().fail(MediaToolError::processFailed("FFmpeg", 1, "Invalid data found"));
    EXPECT_EQ(takeJournal(),
              (Lines{"phase failed: Invalid data found", "player 1: play", "previewPlaying true"}));
    EXPECT_EQ(contentOf(destination), "half");
    EXPECT_EQ(model().exportTask(), nullptr);
}

TEST_F(Exporting, CanFailWithAnyError)
{
    const std::pair<std::exception_ptr, const char*> rows[] = {
        {std::make_exception_ptr(MediaToolError::toolMissing("ffmpeg")),
         "ffmpeg is missing. Build the bundled media tools first."},
        {std::make_exception_ptr(MediaToolError::processFailed("FFmpeg", 1, "")),
         "FFmpeg could not process this video."},
        // Only a `CancellationError` counts as a cancellation; every other error is shown.
        {std::make_exception_ptr(MediaToolError::cancelled()), "The export was cancelled."},
        {std::make_exception_ptr(std::runtime_error("anything")), "anything"},
    };
    for (const auto& [error, message] : rows) {
        model().setPhase(Phase::ready());
        startExport();
        exporting().failWith(error);
        EXPECT_EQ(model().phase(), Phase::failed(message));
        EXPECT_TRUE(model().previewPlaying());
    }
}

TEST_F(Exporting, WorksAgainAfterASuccess)
{
    startExport();
    exporting().complete(destination);
    startExport();
    EXPECT_EQ(m_services.exports.size(), 2U);
    exporting().complete(destination);
    EXPECT_EQ(model().phase(), Phase::complete(destination));
}

TEST_F(Exporting, WorksWithoutAPlayer)
{
    model().setPlayer(nullptr);
    startExport();
    exporting().complete(destination);
    EXPECT_EQ(takeJournal(), (Lines{"phase complete: Saved Beach day-vertical.mp4", "previewPlaying true"}));
}

} // namespace stackreel
