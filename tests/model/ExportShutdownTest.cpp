#include "model/ExportShutdown.h"

#include "media/CancellationError.h"
#include "model/TaskHandle.h"
#include "tests/model/ModelTest.h"

#include <QCoreApplication>
#include <QTimer>

namespace stackreel
{

namespace
{

class ExportShutdownTest : public ModelTest
{
protected:
    void startExport()
    {
        load(20);
        model().chooseExportDestination();
        m_services.savePanel->choose(destination);
        runQueuedTasks();
        takeJournal();
    }

    const std::filesystem::path destination = "/exports/out.mp4";
};

} // namespace

TEST_F(ExportShutdownTest, DoesNothingWithoutAnExport)
{
    ExportShutdown::endExport(model().exportTask());
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(ExportShutdownTest, DoesNotWaitForAnExportThatHasEnded)
{
    startExport();
    const auto task = model().exportTask();
    m_services.exports.back().task().complete(destination);
    ExportShutdown::endExport(task);
    EXPECT_EQ(model().phase(), Phase::complete(destination));
}

TEST_F(ExportShutdownTest, CancelsTheExportAndWaitsForItsEnd)
{
    startExport();
    // The tool ends some time after it is asked to.
    bool noticed = false;
    QTimer::singleShot(20, &model(), [&] {
        EXPECT_TRUE(m_services.exports.back().isCancelled());
        noticed = true;
        m_services.exports.back().task().fail(CancellationError());
    });
    ExportShutdown::endExport(model().exportTask());
    EXPECT_TRUE(noticed);
    EXPECT_EQ(model().phase(), Phase::ready());
    EXPECT_EQ(model().exportTask(), nullptr);
}

TEST_F(ExportShutdownTest, WorksWhileTheProgramQuits)
{
    startExport();
    QTimer::singleShot(0, &model(), [] { QCoreApplication::quit(); });
    const auto connection =
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &model(), [this] {
            QTimer::singleShot(5, &model(),
                               [this] { m_services.exports.back().task().fail(CancellationError()); });
            ExportShutdown::endExport(model().exportTask());
        });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    QObject::disconnect(connection);
    EXPECT_EQ(model().phase(), Phase::ready());
}

TEST_F(ExportShutdownTest, EndsAnExportThatHasNotBegunYet)
{
    load(20);
    model().chooseExportDestination();
    m_services.savePanel->choose(destination);
    bool ended = false;
    QObject context;
    QMetaObject::invokeMethod(
        &context,
        [&] {
            // The task of the export is the next call in the queue.
            QTimer::singleShot(0, &model(),
                               [this] { m_services.exports.back().task().fail(CancellationError()); });
            ExportShutdown::endExport(model().exportTask());
            ended = true;
        },
        Qt::QueuedConnection);
    runQueuedTasks();
    EXPECT_TRUE(ended);
    EXPECT_EQ(model().phase(), Phase::ready());
}

} // namespace stackreel
