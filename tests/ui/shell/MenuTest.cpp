#include "system/Version.h"
#include "tests/ui/shell/Menus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const auto choose = QStringLiteral("chooseVideoItem");
const auto updates = QStringLiteral("updatesItem");
const auto toggle = QStringLiteral("togglePreviewItem");

QString text(WindowWithFakes& window, const QString& item)
{
    return window.item(item).property("text").toString();
}

std::vector<Phase> everyPhase()
{
    return {Phase::empty(),     Phase::preparing(),        Phase::ready(),
            Phase::exporting(), Phase::complete("/a.mp4"), Phase::failed("No video.")};
}

TEST(MenuTest, TheItemsHaveTheirTexts)
{
    WindowWithFakes window;
    EXPECT_EQ(text(window, choose), QStringLiteral("Choose Video…"));
    EXPECT_EQ(text(window, updates), QStringLiteral("Check for Updates…"));
    EXPECT_EQ(text(window, toggle), QStringLiteral("Play Preview"));
    EXPECT_EQ(text(window, QStringLiteral("aboutItem")), QStringLiteral("About Stackreel"));
    EXPECT_EQ(text(window, QStringLiteral("quitItem")), QStringLiteral("Quit"));
}

TEST(MenuTest, ThePlaybackItemIsNamedAfterItsNextAction)
{
    WindowWithFakes window;
    window.model().setPreviewPlaying(true);
    EXPECT_EQ(text(window, toggle), QStringLiteral("Pause Preview"));
    window.model().setPreviewPlaying(false);
    EXPECT_EQ(text(window, toggle), QStringLiteral("Play Preview"));
}

TEST(MenuTest, ThePlaybackItemIsEnabledWhileTheSourceCanBeEdited)
{
    WindowWithFakes window;
    const bool expected[] = {false, false, true, false, true, false};
    const bool* row = expected;
    for (const Phase& phase : everyPhase()) {
        window.model().setPhase(phase);
        EXPECT_EQ(window.item(toggle).isEnabled(), *row++) << window.model().phaseMessage();
    }
}

TEST(MenuTest, ChooseVideoAndCheckForUpdatesAreAlwaysEnabled)
{
    WindowWithFakes window;
    for (const Phase& phase : everyPhase()) {
        window.model().setPhase(phase);
        EXPECT_TRUE(window.item(choose).isEnabled());
        EXPECT_TRUE(window.item(updates).isEnabled());
    }
}

TEST(MenuTest, ControlOOpensTheSourceChooserInEveryPhase)
{
    WindowWithFakes window;
    std::size_t shown = 0;
    for (const Phase& phase : everyPhase()) {
        window.model().setPhase(phase);
        window.key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(window.fakes().openPanel->timesShown(), ++shown) << window.model().phaseMessage();
    }
}

TEST(MenuTest, ChooseVideoOpensTheSourceChooser)
{
    WindowWithFakes window;
    clickItem(window, QStringLiteral("File"), choose);
    EXPECT_EQ(window.fakes().openPanel->timesShown(), 1U);
}

TEST(MenuTest, CheckForUpdatesAsksForACheck)
{
    WindowWithFakes window;
    clickItem(window, QStringLiteral("Stackreel"), updates);
    EXPECT_EQ(window.updateChecks(), 1);
}

TEST(MenuTest, ThePlaybackItemTogglesThePreview)
{
    WindowWithFakes window;
    window.load();
    ASSERT_TRUE(window.model().previewPlaying());
    clickItem(window, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(window.model().previewPlaying());
    clickItem(window, QStringLiteral("Playback"), toggle);
    EXPECT_TRUE(window.model().previewPlaying());
}

TEST(MenuTest, ThePlaybackItemTogglesThePreviewAfterAnExportButNotDuringIt)
{
    WindowWithFakes window;
    window.load();
    ASSERT_TRUE(window.model().previewPlaying());
    window.model().setPhase(Phase::exporting());
    clickItem(window, QStringLiteral("Playback"), toggle);
    EXPECT_TRUE(window.model().previewPlaying());
    window.key(Qt::Key_Escape);
    window.model().setPhase(Phase::complete("/a.mp4"));
    clickItem(window, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(window.model().previewPlaying());
}

TEST(MenuTest, ThePlaybackItemDoesNothingWithoutASource)
{
    WindowWithFakes window;
    clickItem(window, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(window.model().previewPlaying());
}

TEST(MenuTest, QuitCloseAndControlQRequestTheEndOfTheProgram)
{
    WindowWithFakes window;
    const QSignalSpy asked(&window.actions(), &WindowActions::quitRequested);
    clickItem(window, QStringLiteral("Stackreel"), QStringLiteral("quitItem"));
    EXPECT_EQ(asked.count(), 1);
    window.key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(asked.count(), 2);
    window.click(QStringLiteral("closeButton"));
    EXPECT_EQ(asked.count(), 3);
}

TEST(MenuTest, AboutNamesTheVersion)
{
    WindowWithFakes window;
    clickItem(window, QStringLiteral("Stackreel"), QStringLiteral("aboutItem"));
    EXPECT_EQ(text(window, QStringLiteral("versionText")),
              QStringLiteral("Version ") + QString::fromLatin1(buildVersion()));
    EXPECT_TRUE(window.item(QStringLiteral("closeAbout")).hasActiveFocus());
    window.key(Qt::Key_Space);
    EXPECT_FALSE(window.item(QStringLiteral("closeAbout")).isVisible());
}

TEST(MenuTest, TheMenusWorkByKeyboardAlone)
{
    WindowWithFakes window;
    window.key(Qt::Key_F10);
    EXPECT_TRUE(window.item(updates).isVisible());
    window.key(Qt::Key_Right);
    EXPECT_FALSE(window.item(updates).isVisible());
    EXPECT_TRUE(window.item(choose).isVisible());
    window.key(Qt::Key_Right);
    EXPECT_TRUE(window.item(toggle).isVisible());
    window.key(Qt::Key_Left);
    window.key(Qt::Key_Down);
    window.key(Qt::Key_Return);
    EXPECT_EQ(window.fakes().openPanel->timesShown(), 1U);
}

TEST(MenuTest, ArrowKeysSwitchMenusWhileThePointerHoversOverATitle)
{
    WindowWithFakes window;
    const QPoint file = centre(menuTitle(window, QStringLiteral("File")));
    const auto movePointer = [&] {
        for (const int x : {-2, 2}) {
            QTest::mouseMove(&window.window(), file + QPoint(x, 0));
            WindowWithFakes::settle();
        }
    };
    clickMenu(window, QStringLiteral("File"));
    movePointer();
    ASSERT_TRUE(window.item(choose).isVisible());
    window.key(Qt::Key_Right);
    movePointer();
    EXPECT_TRUE(window.item(toggle).isVisible());
    EXPECT_FALSE(window.item(choose).isVisible());
}

TEST(MenuTest, HoveringOpensNoMenuAfterAKeyClosedOne)
{
    WindowWithFakes window;
    const auto hover = [&](const char* title) {
        const QPoint place = centre(menuTitle(window, QString::fromLatin1(title)));
        QTest::mouseMove(&window.window(), place - QPoint(3, 0));
        QTest::mouseMove(&window.window(), place);
        WindowWithFakes::settle();
        EXPECT_TRUE(menuTitle(window, QString::fromLatin1(title)).property("hovered").toBool()) << title;
    };
    clickMenu(window, QStringLiteral("File"));
    hover("File");
    EXPECT_TRUE(window.item(choose).isVisible());
    window.key(Qt::Key_Escape);
    EXPECT_FALSE(window.item(choose).isVisible());
    hover("Playback");
    EXPECT_FALSE(window.item(toggle).isVisible());
    EXPECT_FALSE(menuTitle(window, QStringLiteral("File")).property("highlighted").toBool());
    clickMenu(window, QStringLiteral("Playback"));
    EXPECT_TRUE(window.item(toggle).isVisible());
    hover("File");
    EXPECT_TRUE(window.item(choose).isVisible()) << "menus follow the pointer once one is open";
    clickMenu(window, QStringLiteral("File"));
    EXPECT_FALSE(window.item(choose).isVisible());
}

} // namespace

} // namespace stackreel
