#include "media/CancellationError.h"
#include "model/TaskHandle.h"
#include "tests/model/ExportFlowTest.h"

#include <QStringList>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

/// Exports that run or wait although their source was replaced.
class BackgroundExportsTest : public ExportFlowTest
{
protected:
    using Names = std::vector<std::string>;

    BackgroundExportsTest()
    {
        QObject::connect(&model(), &AppModel::backgroundExportsChanged, &model(), [this] {
            if (m_lists.empty() || m_lists.back() != names())
                m_lists.push_back(names());
        });
        QObject::connect(&model(), &AppModel::exportOfReplacedSourceEnded, &model(),
                         [this](const QString& message) { m_messages += message; });
    }

    Names names()
    {
        Names names;
        for (const BackgroundExport& each : model().backgroundExports())
            names.push_back(each.destination.filename().string());
        return names;
    }
    void startExportTo(const std::string& name)
    {
        model().chooseExportDestination();
        m_services.savePanel->choose(m_directory / name);
        runQueuedTasks();
        takeJournal();
    }
    /// Starts exports, each from a source of its own, and replaces the source of the last one.
    void exportInTheBackground(const Names& files)
    {
        for (const std::string& name : files) {
            startExportTo(name);
            load(20, "/clips/" + name + ".mov");
        }
    }
    void cancel(std::size_t index)
    {
        model().backgroundExports().at(index).task->cancel();
        runQueuedTasks();
    }

    std::vector<Names> m_lists; ///< the different lists, as `backgroundExportsChanged` made them known
    QStringList m_messages;
};

} // namespace

TEST_F(BackgroundExportsTest, AreListedFromTheReplacementOfTheirSourceToTheirEnd)
{
    using End = std::function<void(ManualTask<std::filesystem::path>&)>;
    const End ends[] = {
        [](auto& task) { task.complete("/exports/a.mp4"); },
        [](auto& task) { task.fail(std::runtime_error("no")); },
        [](auto& task) { task.fail(CancellationError()); },
    };
    for (const End& end : ends) {
        m_lists.clear();
        startExportTo("a.mp4");
        EXPECT_EQ(names(), Names()) << "the window shows it";
        const auto task = model().exportTask();
        load(20, "/clips/b.mov");
        EXPECT_EQ(names(), Names{"a.mp4"});
        EXPECT_EQ(model().backgroundExports().front().task, task);
        end(exporting());
        EXPECT_EQ(m_lists, (std::vector<Names>{{}, {"a.mp4"}, {}}));
    }
}

TEST_F(BackgroundExportsTest, DoNotIncludeOneThatTheWindowShowsToItsEnd)
{
    startExportTo("a.mp4");
    exporting().complete(m_directory / "a.mp4");
    startExportTo("b.mp4");
    exporting().fail(CancellationError());
    EXPECT_EQ(m_lists, std::vector<Names>{{}});
    EXPECT_EQ(m_messages, QStringList());
}

TEST_F(BackgroundExportsTest, DoNotIncludeOneThatNeverBegins)
{
    model().chooseExportDestination();
    model().chooseSource();
    m_services.savePanel->choose(m_directory / "a.mp4");
    m_services.openPanel->choose("/clips/b.mov");
    runQueuedTasks();
    EXPECT_EQ(m_services.exports.size(), 0U);
    EXPECT_EQ(m_lists, std::vector<Names>{{}});
    EXPECT_EQ(m_messages, QStringList());
}

TEST_F(BackgroundExportsTest, AreListedInTheOrderOfTheirStartWhileTheyWait)
{
    exportInTheBackground({"a.mp4", "b.mp4", "c.mp4"});
    EXPECT_EQ(names(), (Names{"a.mp4", "b.mp4", "c.mp4"}));
    const auto exports = model().backgroundExports();
    EXPECT_LT(exports[0].number, exports[1].number);
    EXPECT_LT(exports[1].number, exports[2].number);
    EXPECT_EQ(m_services.exports.size(), 1U);
}

TEST_F(BackgroundExportsTest, EndOneByOneWhenTheyAreCancelled)
{
    exportInTheBackground({"a.mp4", "b.mp4", "c.mp4"});
    cancel(1);
    EXPECT_EQ(names(), (Names{"a.mp4", "c.mp4"}));
    EXPECT_EQ(m_messages, QStringList(QStringLiteral("b.mp4 was not exported. The export was cancelled.")));
    EXPECT_FALSE(m_services.exports.at(0).isCancelled());
    EXPECT_EQ(model().phase(), Phase::ready());

    cancel(0);
    EXPECT_TRUE(m_services.exports.at(0).isCancelled());
    EXPECT_EQ(names(), (Names{"a.mp4", "c.mp4"})) << "it has not ended";
    exporting().fail(CancellationError());
    runQueuedTasks();
    EXPECT_EQ(m_messages.back(), QStringLiteral("a.mp4 was not exported. The export was cancelled."));
    EXPECT_EQ(names(), Names{"c.mp4"});
    EXPECT_EQ(m_services.exportRequests.back().output, m_directory / "c.mp4");
    EXPECT_FALSE(m_services.exports.back().isCancelled());
}

TEST_F(BackgroundExportsTest, LetTheExportThatWaitsBeginWhenTheyAreCancelled)
{
    exportInTheBackground({"a.mp4"});
    startExportTo("b.mp4");
    EXPECT_EQ(model().phase(), Phase::exporting());
    EXPECT_EQ(names(), Names{"a.mp4"});
    cancel(0);
    exporting().fail(CancellationError());
    runQueuedTasks();
    EXPECT_EQ(m_services.exportRequests.back().output, m_directory / "b.mp4");
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(model().phase(), Phase::exporting());
}

TEST_F(BackgroundExportsTest, IncludeOneThatAnotherExportOfTheSameSourceSuperseded)
{
    model().chooseExportDestination();
    model().chooseExportDestination();
    m_services.savePanel->choose(m_directory / "a.mp4");
    runQueuedTasks();
    m_services.savePanel->choose(m_directory / "b.mp4");
    runQueuedTasks();
    EXPECT_EQ(names(), Names{"a.mp4"});
    m_services.exports.at(0).task().fail(CancellationError());
    EXPECT_EQ(names(), Names());
}

} // namespace stackreel
