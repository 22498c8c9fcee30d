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

TEST_F(CancellingAnExport, ReturnsToReadyOnceItHasEnded)
{
    startExport();
    model().exportTask()->cancel();
    EXPECT_EQ(takeJournal(), Lines{"cancel export 1"});
    EXPECT_EQ(model().phase(), Phase::exporting());

    exporting().fail(CancellationError());
    EXPECT_EQ(takeJournal(), (Lines{"phase ready", "player 1: play", "previewPlaying true"}));
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().phaseMessage(), "Beach day.MOV");
}

TEST_F(CancellingAnExport, ChangesNoFileItself)
{
    m_directory.write(destination.filename(), "old");
    startExport();
    model().exportTask()->cancel();
    exporting().fail(CancellationError());
    EXPECT_EQ(contentOf(destination), "old");
}

TEST_F(CancellingAnExport, RunsAllStepsWhenCancelledBeforeItBegins)
{
    model().chooseExportDestination();
    m_services.savePanel->choose(destination);
    takeJournal();
    // The first queued call only queues the task of the export.
    QObject context;
    const auto cancel = [this] { model().exportTask()->cancel(); };
    QMetaObject::invokeMethod(&context, cancel, Qt::QueuedConnection);
    runQueuedTasks();
    EXPECT_EQ(takeJournal(),
              (Lines{"phase exporting", "player 1: pause", "previewPlaying false",
                     "export 1: /clips/Beach day.MOV to " + destination.string(), "cancel export 1"}));
    exporting().fail(CancellationError());
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(CancellingAnExport, KeepsTheFileWhenTheExportSucceedsAnyway)
{
    m_directory.write(destination.filename(), "whole");
    startExport();
    model().exportTask()->cancel();
    exporting().complete(destination);
    EXPECT_EQ(model().phase(), Phase::complete(destination));
    EXPECT_EQ(contentOf(destination), "whole");
}

TEST_F(CancellingAnExport, ShowsTheErrorWhenTheExportFailsAnyway)
{
    startExport();
    model().exportTask()->cancel();
    exporting().fail(MediaToolError::toolMissing("ffmpeg"));
    EXPECT_EQ(model().phase(), Phase::failed("ffmpeg is missing. Build the bundled media tools first."));
}

TEST_F(CancellingAnExport, DoesNothingAfterItEnded)
{
    startExport();
    const auto task = model().exportTask();
    exporting().complete(destination);
    takeJournal();
    task->cancel();
    EXPECT_EQ(takeJournal(), Lines{"cancel export 1"}) << "nothing is announced or played";
    EXPECT_EQ(model().phase(), Phase::complete(destination));
}

TEST_F(CancellingAnExport, HappensWhenAnotherExportStarts)
{
    // Open two save panels at the same time.
    model().chooseExportDestination();
    model().chooseExportDestination();
    m_services.savePanel->choose(destination);
    runQueuedTasks();
    const auto first = model().exportTask();
    m_services.savePanel->choose(m_directory / "second.mp4");
    runQueuedTasks();
    EXPECT_TRUE(first->isCancelled());
    EXPECT_NE(model().exportTask(), first);
    EXPECT_FALSE(model().exportTask()->isCancelled());
    EXPECT_EQ(model().unfinishedExports(), (Tasks{first, model().exportTask()}));
    EXPECT_EQ(m_services.exports.size(), 1U) << "the first has not ended";
    const auto second = model().exportTask();
    m_services.exports.at(0).task().fail(CancellationError());
    EXPECT_EQ(model().phase(), Phase::exporting());
    EXPECT_EQ(model().exportTask(), second);
    EXPECT_EQ(model().unfinishedExports(), Tasks{second});
    runQueuedTasks();
    m_services.exports.at(1).task().complete(m_directory / "second.mp4");
    EXPECT_EQ(model().unfinishedExports(), Tasks());
    EXPECT_EQ(model().phase(), Phase::complete(m_directory / "second.mp4"));
}

TEST_F(AnExportWithoutItsModel, ChangesNothingWhenItEnds)
{
    startExport();
    destroyModel();
    EXPECT_EQ(takeJournal(), Lines()) << "the export is not cancelled";
    exporting().complete(destination);
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(AnExportWithoutItsModel, ChangesNothingWhenItFails)
{
    startExport();
    destroyModel();
    exporting().fail(std::runtime_error("no"));
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(AnExportWithoutItsModel, DoesNotBegin)
{
    model().chooseExportDestination();
    m_services.savePanel->choose(destination);
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
    EXPECT_EQ(m_services.exports.size(), 0U);
}

} // namespace stackreel
