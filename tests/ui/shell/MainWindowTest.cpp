#include "tests/support/window/OfflineWindow.h"

#include <QScreen>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(MainWindowTest, ShowsTheContentBelowTheTitleBar)
{
    OfflineWindow offline;
    EXPECT_EQ(offline.window().title(), QStringLiteral("Stackreel"));
    const QQuickItem& content = offline.item(QStringLiteral("contentView"));
    EXPECT_EQ(content.width(), 1180);
    EXPECT_GE(content.height(), 680);
    EXPECT_EQ(content.y() + content.height(), 780);
}

TEST(MainWindowTest, KeepsTheMinimumSizeOfTheContent)
{
    OfflineWindow offline(QSize(100, 100));
    const QQuickItem& content = offline.item(QStringLiteral("contentView"));
    EXPECT_EQ(offline.window().minimumWidth(), 980);
    EXPECT_EQ(offline.window().minimumHeight() - content.y(), 680);
}

TEST(MainWindowTest, OpensAtItsInitialSizeLimitedByTheScreen)
{
    FakeServices fakes;
    AppModel model(fakes.services());
    WindowModel windowModel(model);
    WindowActions actions;
    MainWindow shown(windowModel, actions);
    const QSize screen = shown.window().screen()->availableGeometry().size();
    ASSERT_EQ(screen, QSize(800, 800)) << "the offscreen platform has another screen size";
    shown.show();
    EXPECT_EQ(shown.window().size(), QSize(980, 780)) << "limited by the minimum width of the content";
}

TEST(MainWindowTest, PassesThroughAllPhasesFromLoadToExport)
{
    OfflineWindow offline;
    EXPECT_EQ(offline.windowModel().phase(), WindowModel::Empty);
    offline.load();
    EXPECT_EQ(offline.windowModel().phase(), WindowModel::Ready);
    offline.finishThumbnails();
    EXPECT_EQ(offline.model().timelineThumbnails().size(), 12U);
    offline.startExport();
    EXPECT_EQ(offline.windowModel().phase(), WindowModel::Exporting);
    offline.fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    OfflineWindow::settle();
    EXPECT_EQ(offline.windowModel().phase(), WindowModel::Complete);
    EXPECT_FALSE(offline.screenshot().isNull());
}

} // namespace

} // namespace stackreel
