#include "tests/support/window/WindowWithFakes.h"

#include <QScreen>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(MainWindowTest, ShowsTheContentBelowTheTitleBar)
{
    WindowWithFakes window;
    EXPECT_EQ(window.window().title(), QStringLiteral("Stackreel"));
    const QQuickItem& content = window.item(QStringLiteral("contentView"));
    EXPECT_EQ(content.width(), 1180);
    EXPECT_GE(content.height(), 680);
    EXPECT_EQ(content.y() + content.height(), 780);
}

TEST(MainWindowTest, KeepsTheMinimumSizeOfTheContent)
{
    WindowWithFakes window(QSize(100, 100));
    const QQuickItem& content = window.item(QStringLiteral("contentView"));
    EXPECT_EQ(window.window().minimumWidth(), 980);
    EXPECT_EQ(window.window().minimumHeight() - content.y(), 680);
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
    const auto* titleBar = shown.window().findChild<QQuickItem*>(QStringLiteral("titleBar"));
    ASSERT_NE(titleBar, nullptr);
    EXPECT_EQ(shown.window().size(), QSize(1180, 780 + int(titleBar->height()))) << "before it is limited";
    shown.show();
    EXPECT_EQ(shown.window().size(), QSize(980, 800)) << "limited by the minimum width of the content";
}

TEST(MainWindowTest, PassesThroughAllPhasesFromLoadToExport)
{
    WindowWithFakes window;
    EXPECT_EQ(window.windowModel().phase(), WindowModel::Empty);
    window.load();
    EXPECT_EQ(window.windowModel().phase(), WindowModel::Ready);
    window.finishThumbnails();
    EXPECT_EQ(window.model().timelineThumbnails().size(), 12U);
    window.startExport();
    EXPECT_EQ(window.windowModel().phase(), WindowModel::Exporting);
    window.fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    WindowWithFakes::settle();
    EXPECT_EQ(window.windowModel().phase(), WindowModel::Complete);
    EXPECT_FALSE(window.screenshot().isNull());
}

} // namespace

} // namespace stackreel
