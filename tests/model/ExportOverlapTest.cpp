#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/TaskHandle.h"
#include "tests/model/ExportFlowTest.h"

#include <functional>
#include <stdexcept>
#include <vector>

namespace stackreel
{

namespace
{

/// An export of a source that is replaced while it runs.
class ExportsOfTwoSources : public ExportFlowTest
{
protected:
    using Tasks = std::vector<std::shared_ptr<TaskHandle>>;

    /// Starts an export of the first source and loads another.
    void replaceTheSourceDuringAnExport()
    {
        startExport();
        m_directory.write(destination.filename(), "half");
        load(30, "/clips/b.mov");
    }
    static QString nameOf(const std::filesystem::path& file)
    {
        return QString::fromStdString(file.filename().string());
    }
    ManualTask<std::filesystem::path>& first() { return m_services.exports.at(0).task(); }
    ManualTask<std::filesystem::path>& second() { return m_services.exports.at(1).task(); }
    void endFirst()
    {
        first().complete(destination);
        runQueuedTasks();
    }
    void startSecond() { startExportTo(other); }
    void startExportTo(const std::filesystem::path& file)
    {
        model().chooseExportDestination();
        m_services.savePanel->choose(file);
        runQueuedTasks();
        ASSERT_EQ(model().phase(), Phase::exporting());
        takeJournal();
    }

    const std::filesystem::path other = m_directory / "b-vertical.mp4";
};

} // namespace

TEST_F(ExportsOfTwoSources, ChangeNothingOfTheSecondSourceWhenTheFirstEnds)
{
    using End = std::function<void(ManualTask<std::filesystem::path>&)>;
    const End ends[] = {
        [this](auto& task) { task.complete(destination); },
        [](auto& task) { task.fail(MediaToolError::processFailed("FFmpeg", 1, "")); },
        [](auto& task) { task.fail(CancellationError()); },
    };
    for (const End& end : ends) {
        // While the second source is loading.
        startExport();
        choose("/clips/b.mov");
        takeJournal();
        end(exporting());
        EXPECT_EQ(takeJournal(), Lines());
        EXPECT_EQ(model().phase(), Phase::preparing());
        EXPECT_FALSE(model().previewPlaying());
        finishLoad(30);
        EXPECT_EQ(model().phase(), Phase::ready());

        // When it is loaded and paused.
        startExport();
        load(20, "/clips/a.mov");
        model().togglePreviewPlayback();
        takeJournal();
        end(exporting());
        EXPECT_EQ(takeJournal(), Lines());
        EXPECT_EQ(model().phase(), Phase::ready());
    }
}

TEST_F(ExportsOfTwoSources, GoOnWhenTheSourceIsReplaced)
{
    replaceTheSourceDuringAnExport();
    EXPECT_FALSE(m_services.exports.at(0).isCancelled());
    EXPECT_EQ(model().exportTask(), nullptr) << "the window does not show it any more";
    EXPECT_EQ(model().unfinishedExports().size(), 1U);
    endFirst();
    EXPECT_EQ(model().unfinishedExports(), Tasks());
}

TEST_F(ExportsOfTwoSources, ReportTheEndOfTheFirstOnce)
{
    QStringList messages;
    const QObject context;
    QObject::connect(&model(), &AppModel::exportOfReplacedSourceEnded, &context,
                     [&](const QString& message) { messages += message; });
    replaceTheSourceDuringAnExport();
    endFirst();
    EXPECT_EQ(messages.takeFirst(), QStringLiteral("Saved ") + nameOf(destination));

    startExport();
    load(20, "/clips/a.mov");
    exporting().fail(MediaToolError::processFailed("FFmpeg", 1, "No space left on device"));
    EXPECT_EQ(messages.takeFirst(),
              nameOf(destination) + QStringLiteral(" was not exported. No space left on device"));

    startExport();
    load(20, "/clips/b.mov");
    exporting().fail(CancellationError());
    EXPECT_EQ(messages.takeFirst(),
              nameOf(destination) + QStringLiteral(" was not exported. The export was cancelled."));

    startExport();
    exporting().complete(destination);
    EXPECT_EQ(messages, QStringList()) << "the window shows it";
}

TEST_F(ExportsOfTwoSources, RunOneAfterTheOther)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    const auto task = model().exportTask();
    ASSERT_NE(task, nullptr);
    EXPECT_EQ(m_services.exports.size(), 1U);
    EXPECT_FALSE(m_services.exports.at(0).isCancelled());
    EXPECT_EQ(model().phaseMessage(), "Rendering from the original video.");

    first().complete(destination);
    EXPECT_EQ(m_services.exports.size(), 1U) << "within the end of the first";
    runQueuedTasks();
    ASSERT_EQ(m_services.exports.size(), 2U);
    EXPECT_EQ(takeJournal(), Lines{"export 2: /clips/b.mov to " + other.string()});
    EXPECT_EQ(model().exportTask(), task);
    EXPECT_EQ(model().unfinishedExports(), Tasks{task});
    second().complete(other);
    EXPECT_EQ(model().phase(), Phase::complete(other));
    EXPECT_EQ(model().exportTask(), nullptr);
}

TEST_F(ExportsOfTwoSources, RunOneAfterTheOtherAfterAFailure)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    first().fail(std::runtime_error("no"));
    runQueuedTasks();
    EXPECT_EQ(m_services.exports.size(), 2U);
    EXPECT_EQ(model().phase(), Phase::exporting());
}

TEST_F(ExportsOfTwoSources, UseTheStateInWhichTheyWereStarted)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    const CropRegion top = model().topRegion();
    model().swapCrops();
    model().setTrimEnd(7);
    endFirst();
    EXPECT_EQ(m_services.exportRequests.at(1).top, top);
    EXPECT_EQ(m_services.exportRequests.at(1).trimEnd, 30);
}

TEST_F(ExportsOfTwoSources, CanBeCancelledWhileTheyWait)
{
    replaceTheSourceDuringAnExport();
    startExportTo(destination);
    model().exportTask()->cancel();
    EXPECT_EQ(takeJournal(), Lines()) << "within the cancellation";
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), (Lines{"phase ready", "player 2: play", "previewPlaying true"}));
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().unfinishedExports().size(), 1U);
    EXPECT_FALSE(m_services.exports.at(0).isCancelled());
    EXPECT_EQ(contentOf(destination), "half") << "it is the first one's file";
    endFirst();
    EXPECT_EQ(m_services.exports.size(), 1U);
    EXPECT_EQ(contentOf(destination), "half");
}

TEST_F(ExportsOfTwoSources, KeepTheOrderWhenOneThatWaitsIsCancelled)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    model().exportTask()->cancel();
    runQueuedTasks();
    startExportTo(m_directory / "third.mp4");
    EXPECT_EQ(m_services.exports.size(), 1U) << "the first still runs";
    endFirst();
    ASSERT_EQ(m_services.exports.size(), 2U);
    EXPECT_EQ(m_services.exportRequests.at(1).output, m_directory / "third.mp4");
}

TEST_F(ExportsOfTwoSources, NeverBeginWhenCancelledAtTheEndOfTheFirst)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    first().complete(destination);
    model().exportTask()->cancel();
    runQueuedTasks();
    EXPECT_EQ(m_services.exports.size(), 1U);
    EXPECT_EQ(model().phase(), Phase::ready());
    startSecond();
    EXPECT_EQ(m_services.exports.size(), 2U);
}

TEST_F(ExportsOfTwoSources, WaitAndRunAlsoWhenTheirSourceIsReplaced)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    load(10, "/clips/c.mov");
    endFirst();
    ASSERT_EQ(m_services.exports.size(), 2U);
    EXPECT_EQ(m_services.exportRequests.at(1).input, "/clips/b.mov");
    EXPECT_EQ(model().phase(), Phase::ready());
    second().complete(other);
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(ExportsOfTwoSources, NeverBeginWhenTheModelIsDestroyedWhileTheyWait)
{
    replaceTheSourceDuringAnExport();
    startSecond();
    destroyModel();
    endFirst();
    EXPECT_EQ(m_services.exports.size(), 1U);
}

TEST_F(ExportsOfTwoSources, StartNothingButReportThatForAPanelOfTheFirstSource)
{
    QStringList messages;
    const QObject context;
    QObject::connect(&model(), &AppModel::exportOfReplacedSourceEnded, &context,
                     [&](const QString& message) { messages += message; });
    model().chooseExportDestination();
    choose("/clips/b.mov");
    takeJournal();
    m_services.savePanel->choose(destination);
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
    finishLoad(30);
    runQueuedTasks();
    takeJournal();
    m_services.savePanel->choose(destination);
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().unfinishedExports(), Tasks());
    const QString message =
        nameOf(destination) + QStringLiteral(" was not exported. Another video was opened in the meantime.");
    EXPECT_EQ(messages, QStringList({message, message}));
}

TEST_F(ExportsOfTwoSources, StartNothingWhenTheSourceIsReplacedBeforeTheyBegin)
{
    model().chooseExportDestination();
    model().chooseSource();
    m_services.savePanel->choose(destination);
    m_services.openPanel->choose("/clips/b.mov");
    runQueuedTasks();
    EXPECT_EQ(m_services.exports.size(), 0U);
    EXPECT_EQ(model().phase(), Phase::preparing());
    EXPECT_EQ(model().unfinishedExports(), Tasks());
}

} // namespace stackreel
