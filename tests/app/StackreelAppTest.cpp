#include "app/StackreelApp.h"

#include "media/CancellationError.h"
#include "tests/desktop/power/FakeSleepServices.h"
#include "tests/support/Awaited.h"
#include "tests/support/MessageBus.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/window/WindowWithFakes.h"
#include "updates/StandardUpdateServices.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

/// The whole application with fake services. Its window is shown, and its event loop runs as in the program.
class StackreelAppTest : public testing::Test
{
protected:
    StackreelAppTest()
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/login1"), &m_logind,
                             QDBusConnection::ExportAllSlots);
        m_bus.registerService(QStringLiteral("org.freedesktop.login1"));
        m_app.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_app.window()));
    }

    void load()
    {
        m_app.model().chooseSource();
        m_world.openPanel->choose(m_folder / "clip.mov");
        WindowWithFakes::settle();
        m_world.inspections.back().task().complete(WindowWithFakes::clip());
        m_world.previews.back().task().complete(m_folder / "clip.mov");
        WindowWithFakes::settle();
    }
    void startExport() { startExport(m_destination); }
    void startExport(const std::filesystem::path& destination)
    {
        load();
        m_app.model().chooseExportDestination();
        m_world.savePanel->choose(destination);
        WindowWithFakes::settle();
        ASSERT_EQ(m_app.model().phase(), Phase::exporting());
    }
    /// Calls `requestQuit` in the event loop and returns the status with which the loop ends, or -1 when it
    /// does not end in time.
    static int runAndQuit(const std::function<void()>& requestQuit)
    {
        QTimer timeout;
        QObject::connect(&timeout, &QTimer::timeout, [] { QCoreApplication::exit(-1); });
        timeout.start(ceiling);
        QTimer::singleShot(0, requestQuit);
        return QCoreApplication::exec();
    }

    ~StackreelAppTest() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("services"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }
    SleepServiceBuses sleepBuses() const
    {
        const auto connection = [address = m_daemon.address()] {
            return QDBusConnection::connectToBus(address, QStringLiteral("program"));
        };
        return {.system = connection, .session = connection};
    }

    MessageBus m_daemon;
    QDBusConnection m_bus = QDBusConnection::connectToBus(m_daemon.address(), QStringLiteral("services"));
    FakeLogind m_logind;
    TemporaryDirectory m_folder;
    const std::filesystem::path m_destination = m_folder / "clip-vertical.mp4";
    FakeServices m_world;
    StackreelApp m_app{m_world.services(), InfoDictionary(), standardUpdateServices(), sleepBuses()};
};

TEST_F(StackreelAppTest, QuitsWhenTheWindowIsClosed)
{
    EXPECT_EQ(runAndQuit([this] { m_app.window().close(); }), 0);
}

TEST_F(StackreelAppTest, QuitsWhenTheWindowIsClosedWhileAnotherIsOpen)
{
    QWindow other;
    other.show();
    EXPECT_EQ(runAndQuit([this] { m_app.window().close(); }), 0);
}

TEST_F(StackreelAppTest, QuitsWhileAnotherWindowRefusesToClose)
{
    class : public QWindow
    {
        void closeEvent(QCloseEvent* event) override { event->ignore(); }
    } other;
    other.show();
    EXPECT_EQ(runAndQuit([this] { m_app.window().close(); }), 0);
}

TEST_F(StackreelAppTest, QuitsWhenItsShortcutIsPressed)
{
    EXPECT_EQ(runAndQuit([this] { QTest::keyClick(&m_app.window(), Qt::Key_Q, Qt::ControlModifier); }), 0);
}

TEST_F(StackreelAppTest, TakesItsShortcutsWhileAMessageHasTheFocus)
{
    QMessageBox message(QMessageBox::Information, QStringLiteral("Update"),
                        QStringLiteral("There is an update."));
    message.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&message));
    QTest::keyClick(&message, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_world.openPanel->timesShown(), 1U);
    EXPECT_EQ(runAndQuit([&] { QTest::keyClick(&message, Qt::Key_Q, Qt::ControlModifier); }), 0);
}

TEST_F(StackreelAppTest, LeavesItsShortcutsAloneWhileAPanelHasTheFocus)
{
    QFileDialog panel;
    panel.setOption(QFileDialog::DontUseNativeDialog);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    QTest::keyClick(&panel, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_world.openPanel->timesShown(), 0U);
    QMessageBox question(QMessageBox::Question, QStringLiteral("Replace"), QStringLiteral("Replace it?"),
                         QMessageBox::Yes | QMessageBox::No, &panel);
    question.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&question));
    QTest::keyClick(&question, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_world.openPanel->timesShown(), 0U);
    question.close();
    panel.close();
    m_app.window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_app.window()));
    QTest::keyClick(&m_app.window(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_world.openPanel->timesShown(), 1U);
}

TEST_F(StackreelAppTest, CancelsARunningExportBeforeItEnds)
{
    startExport();
    EXPECT_EQ(runAndQuit([this] { m_app.window().close(); }), 0);
    // The tool reacts to the cancellation after a while.
    QTimer::singleShot(30, &m_app.model(), [this] {
        EXPECT_TRUE(m_world.exports.back().isCancelled());
        m_world.exports.back().task().fail(CancellationError());
    });
    m_app.shutDown();
    EXPECT_EQ(m_app.model().phase(), Phase::ready());
    EXPECT_FALSE(m_app.window().isVisible());
}

TEST_F(StackreelAppTest, CancelsTheExportOfAReplacedSourceAndTheOneThatWaitsForIt)
{
    startExport();
    startExport(m_folder / "other-vertical.mp4");
    EXPECT_EQ(m_app.model().unfinishedExports().size(), 2U);
    QTimer::singleShot(30, &m_app.model(), [this] {
        EXPECT_TRUE(m_world.exports.back().isCancelled());
        m_world.exports.back().task().fail(CancellationError());
    });
    m_app.shutDown();
    EXPECT_EQ(m_world.exports.size(), 1U) << "the other one never began";
    EXPECT_TRUE(m_app.model().unfinishedExports().empty());
}

TEST_F(StackreelAppTest, KeepsTheComputerAwakeUntilTheExportOfAReplacedSourceHasEnded)
{
    startExport();
    ASSERT_TRUE(eventually([&] { return m_logind.isHeld(); }));
    load();
    EXPECT_TRUE(m_logind.isHeld());
    m_world.exports.back().task().complete(m_destination);
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(StackreelAppTest, CancelsARunningLoadAndWaitsForItsEnd)
{
    m_app.model().chooseSource();
    m_world.openPanel->choose(m_folder / "clip.mov");
    WindowWithFakes::settle();
    ASSERT_EQ(m_app.model().phase(), Phase::preparing());
    bool ended = false;
    QTimer::singleShot(30, &m_app.model(), [&] {
        EXPECT_TRUE(m_world.inspections.back().isCancelled());
        ended = true;
        m_world.inspections.back().task().fail(CancellationError());
    });
    m_app.shutDown();
    EXPECT_TRUE(ended);
    EXPECT_EQ(m_app.model().phase(), Phase::preparing()) << "a cancellation is not shown as a failure";
}

TEST_F(StackreelAppTest, DoesNotWaitForALoadThatIsBlocked)
{
    m_app.model().chooseSource();
    m_world.openPanel->choose(m_folder / "clip.mov");
    WindowWithFakes::settle();
    m_app.shutDown(); // ends this process if it waits for longer than twice the grace period
    EXPECT_FALSE(m_app.model().unfinishedLoads().empty());
    m_world.inspections.back().task().fail(CancellationError());
}

TEST_F(StackreelAppTest, DoesNothingWhenUpdatesAreCheckedWithoutAKey)
{
    for (QWindow* window : QGuiApplication::topLevelWindows())
        EXPECT_TRUE(!window->isVisible() || window == &m_app.window());
    auto* item = m_app.window().findChild<QObject*>(QStringLiteral("updatesItem"));
    ASSERT_NE(item, nullptr);
    QMetaObject::invokeMethod(item, "triggered");
    WindowWithFakes::settle();
    for (QWindow* window : QGuiApplication::topLevelWindows())
        EXPECT_TRUE(!window->isVisible() || window == &m_app.window());
}

} // namespace

} // namespace stackreel
