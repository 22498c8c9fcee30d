#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"
#include "tests/model/ExportFlowTest.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace stackreel
{

namespace
{

using CancellingAnExport = ExportFlowTest;
using AnExportWithoutItsModel = ExportFlowTest;

using Tasks = std::vector<std::shared_ptr<TaskHandle>>;

} // namespace

TEST_F(CancellingAnExport, DeletesWhatWasWrittenAndReturnsToReady)
{
    m_directory.write(destination.filename(), "half");
    startExport();
    model().exportTask()->cancel();
    EXPECT_EQ(happened(), Lines{"cancel export 1"});
    EXPECT_EQ(model().phase(), Phase::exporting()) << "until the export has noticed";
    EXPECT_TRUE(std::filesystem::exists(destination));

    exporting().fail(CancellationError());
    EXPECT_EQ(happened(), (Lines{"phase ready", "player 1: play", "previewPlaying true"}));
    EXPECT_FALSE(std::filesystem::exists(destination));
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().phaseMessage(), "Beach day.MOV");
}

TEST_F(CancellingAnExport, IgnoresThatThereIsNothingToDelete)
{
    startExport();
    model().exportTask()->cancel();
    exporting().fail(CancellationError());
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(CancellingAnExport, IgnoresThatTheFileCannotBeDeleted)
{
    // A folder that is not empty cannot.
    m_directory.write(destination.filename() / "inside", "");
    startExport();
    model().exportTask()->cancel();
    exporting().fail(CancellationError());
    EXPECT_EQ(model().phase(), Phase::ready());
    EXPECT_TRUE(std::filesystem::exists(destination));
}

TEST_F(CancellingAnExport, BeforeItsTaskRunsStillGoesThroughAllSteps)
{
    model().chooseExportDestination();
    m_world.savePanel->choose(destination);
    happened();
    // The first queued task only starts the export's own.
    QObject context;
    QMetaObject::invokeMethod(
        &context, [this] { model().exportTask()->cancel(); }, Qt::QueuedConnection);
    runQueuedTasks();
    EXPECT_EQ(happened(),
              (Lines{"phase exporting", "player 1: pause", "previewPlaying false",
                     "export 1: /clips/Beach day.MOV to " + destination.string(), "cancel export 1"}));
    exporting().fail(CancellationError());
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(CancellingAnExport, ThatEndedWellBeforeItNoticedKeepsTheFile)
{
    m_directory.write(destination.filename(), "whole");
    startExport();
    model().exportTask()->cancel();
    exporting().complete(destination);
    EXPECT_EQ(model().phase(), Phase::complete(destination));
    EXPECT_EQ(contentOf(destination), "whole");
}

TEST_F(CancellingAnExport, ThatFailedBeforeItNoticedShowsTheFailure)
{
    startExport();
    model().exportTask()->cancel();
    exporting().fail(MediaToolError::toolMissing("ffmpeg"));
    EXPECT_EQ(model().phase(), Phase::failed("ffmpeg is missing. Build the bundled media tools first."));
}

TEST_F(CancellingAnExport, AfterItEndedDoesNothing)
{
    startExport();
    const auto task = model().exportTask();
    exporting().complete(destination);
    happened();
    task->cancel();
    EXPECT_EQ(happened(), Lines{"cancel export 1"}) << "nothing is announced or played";
    EXPECT_EQ(model().phase(), Phase::complete(destination));
}

TEST_F(CancellingAnExport, HappensWhenAnotherIsStarted)
{
    // Two panels can be open at once.
    model().chooseExportDestination();
    model().chooseExportDestination();
    m_world.savePanel->choose(destination);
    runQueuedTasks();
    const auto first = model().exportTask();
    m_world.savePanel->choose(m_directory / "second.mp4");
    runQueuedTasks();
    EXPECT_TRUE(first->isCancelled());
    EXPECT_NE(model().exportTask(), first);
    EXPECT_FALSE(model().exportTask()->isCancelled());
    EXPECT_EQ(model().unfinishedExports(), (Tasks{first, model().exportTask()}));
    const auto second = model().exportTask();
    m_world.exports.at(0).task().fail(CancellationError());
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().unfinishedExports(), Tasks{second});
    m_world.exports.at(1).task().complete(m_directory / "second.mp4");
    EXPECT_EQ(model().unfinishedExports(), Tasks());
    EXPECT_EQ(model().phase(), Phase::complete(m_directory / "second.mp4"));
}

TEST_F(AnExportWithoutItsModel, TouchesNothingWhenItEnds)
{
    startExport();
    destroyModel();
    EXPECT_EQ(happened(), Lines()) << "the export is not cancelled";
    exporting().complete(destination);
    EXPECT_EQ(happened(), Lines());
}

TEST_F(AnExportWithoutItsModel, TouchesNothingWhenItFails)
{
    startExport();
    destroyModel();
    exporting().fail(std::runtime_error("no"));
    EXPECT_EQ(happened(), Lines());
}

TEST_F(AnExportWithoutItsModel, StillLeavesNoPartialFileWhenCancelled)
{
    m_directory.write(destination.filename(), "half");
    startExport();
    const auto task = model().exportTask();
    destroyModel();
    task->cancel();
    exporting().fail(CancellationError());
    EXPECT_FALSE(std::filesystem::exists(destination));
}

TEST_F(AnExportWithoutItsModel, DoesNotBegin)
{
    model().chooseExportDestination();
    m_world.savePanel->choose(destination);
    QObject context;
    std::shared_ptr<TaskHandle> task;
    QMetaObject::invokeMethod(
        &context,
        [&] {
            task = model().exportTask();
            destroyModel();
        },
        Qt::QueuedConnection);
    runQueuedTasks();
    ASSERT_NE(task, nullptr);
    EXPECT_TRUE(task->hasEnded());
    EXPECT_EQ(m_world.exports.size(), 0U);
}

} // namespace stackreel
