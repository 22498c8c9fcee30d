#include "platform/Version.h"
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

QString text(OfflineWindow& offline, const QString& item)
{
    return offline.item(item).property("text").toString();
}

std::vector<Phase> everyPhase()
{
    return {Phase::empty(),     Phase::preparing(),        Phase::ready(),
            Phase::exporting(), Phase::complete("/a.mp4"), Phase::failed("No video.")};
}

TEST(MenuTest, TheItemsHaveTheirTexts)
{
    OfflineWindow offline;
    EXPECT_EQ(text(offline, choose), QStringLiteral("Choose Video…"));
    EXPECT_EQ(text(offline, updates), QStringLiteral("Check for Updates…"));
    EXPECT_EQ(text(offline, toggle), QStringLiteral("Play Preview"));
    EXPECT_EQ(text(offline, QStringLiteral("aboutItem")), QStringLiteral("About Stackreel"));
    EXPECT_EQ(text(offline, QStringLiteral("quitItem")), QStringLiteral("Quit"));
}

TEST(MenuTest, ThePlaybackItemIsNamedAfterItsNextAction)
{
    OfflineWindow offline;
    offline.model().setPreviewPlaying(true);
    EXPECT_EQ(text(offline, toggle), QStringLiteral("Pause Preview"));
    offline.model().setPreviewPlaying(false);
    EXPECT_EQ(text(offline, toggle), QStringLiteral("Play Preview"));
}

TEST(MenuTest, ThePlaybackItemIsEnabledWhileTheSourceCanBeEdited)
{
    OfflineWindow offline;
    const bool expected[] = {false, false, true, false, true, false};
    const bool* row = expected;
    for (const Phase& phase : everyPhase()) {
        offline.model().setPhase(phase);
        EXPECT_EQ(offline.item(toggle).isEnabled(), *row++) << offline.model().phaseMessage();
    }
}

TEST(MenuTest, ChooseVideoAndCheckForUpdatesAreAlwaysEnabled)
{
    OfflineWindow offline;
    for (const Phase& phase : everyPhase()) {
        offline.model().setPhase(phase);
        EXPECT_TRUE(offline.item(choose).isEnabled());
        EXPECT_TRUE(offline.item(updates).isEnabled());
    }
}

TEST(MenuTest, ControlOOpensTheSourceChooserInEveryPhase)
{
    OfflineWindow offline;
    std::size_t shown = 0;
    for (const Phase& phase : everyPhase()) {
        offline.model().setPhase(phase);
        offline.key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(offline.fakes().openPanel->timesShown(), ++shown) << offline.model().phaseMessage();
    }
}

TEST(MenuTest, ChooseVideoOpensTheSourceChooser)
{
    OfflineWindow offline;
    clickItem(offline, QStringLiteral("File"), choose);
    EXPECT_EQ(offline.fakes().openPanel->timesShown(), 1U);
}

TEST(MenuTest, CheckForUpdatesAsksForACheck)
{
    OfflineWindow offline;
    clickItem(offline, QStringLiteral("Stackreel"), updates);
    EXPECT_EQ(offline.updateChecks(), 1);
}

TEST(MenuTest, ThePlaybackItemTogglesThePreview)
{
    OfflineWindow offline;
    offline.load();
    ASSERT_TRUE(offline.model().previewPlaying());
    clickItem(offline, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(offline.model().previewPlaying());
    clickItem(offline, QStringLiteral("Playback"), toggle);
    EXPECT_TRUE(offline.model().previewPlaying());
}

TEST(MenuTest, ThePlaybackItemTogglesThePreviewAfterAnExportButNotDuringIt)
{
    OfflineWindow offline;
    offline.load();
    ASSERT_TRUE(offline.model().previewPlaying());
    offline.model().setPhase(Phase::exporting());
    clickItem(offline, QStringLiteral("Playback"), toggle);
    EXPECT_TRUE(offline.model().previewPlaying());
    offline.key(Qt::Key_Escape);
    offline.model().setPhase(Phase::complete("/a.mp4"));
    clickItem(offline, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(offline.model().previewPlaying());
}

TEST(MenuTest, ThePlaybackItemDoesNothingWithoutASource)
{
    OfflineWindow offline;
    clickItem(offline, QStringLiteral("Playback"), toggle);
    EXPECT_FALSE(offline.model().previewPlaying());
}

TEST(MenuTest, QuitCloseAndControlQRequestTheEndOfTheProgram)
{
    OfflineWindow offline;
    const QSignalSpy asked(&offline.actions(), &WindowActions::quitRequested);
    clickItem(offline, QStringLiteral("Stackreel"), QStringLiteral("quitItem"));
    EXPECT_EQ(asked.count(), 1);
    offline.key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(asked.count(), 2);
    offline.click(QStringLiteral("closeButton"));
    EXPECT_EQ(asked.count(), 3);
}

TEST(MenuTest, AboutNamesTheVersion)
{
    OfflineWindow offline;
    clickItem(offline, QStringLiteral("Stackreel"), QStringLiteral("aboutItem"));
    EXPECT_EQ(text(offline, QStringLiteral("versionText")),
              QStringLiteral("Version ") + QString::fromLatin1(buildVersion()));
    EXPECT_TRUE(offline.item(QStringLiteral("closeAbout")).hasActiveFocus());
    offline.key(Qt::Key_Space);
    EXPECT_FALSE(offline.item(QStringLiteral("closeAbout")).isVisible());
}

TEST(MenuTest, TheMenusWorkByKeyboardAlone)
{
    OfflineWindow offline;
    offline.key(Qt::Key_F10);
    EXPECT_TRUE(offline.item(updates).isVisible());
    offline.key(Qt::Key_Right);
    EXPECT_FALSE(offline.item(updates).isVisible());
    EXPECT_TRUE(offline.item(choose).isVisible());
    offline.key(Qt::Key_Right);
    EXPECT_TRUE(offline.item(toggle).isVisible());
    offline.key(Qt::Key_Left);
    offline.key(Qt::Key_Down);
    offline.key(Qt::Key_Return);
    EXPECT_EQ(offline.fakes().openPanel->timesShown(), 1U);
}

TEST(MenuTest, ArrowKeysSwitchMenusWhileThePointerHoversOverATitle)
{
    OfflineWindow offline;
    const QPoint file = centre(menuTitle(offline, QStringLiteral("File")));
    const auto movePointer = [&] {
        for (const int x : {-2, 2}) {
            QTest::mouseMove(&offline.window(), file + QPoint(x, 0));
            OfflineWindow::settle();
        }
    };
    clickMenu(offline, QStringLiteral("File"));
    movePointer();
    ASSERT_TRUE(offline.item(choose).isVisible());
    offline.key(Qt::Key_Right);
    movePointer();
    EXPECT_TRUE(offline.item(toggle).isVisible());
    EXPECT_FALSE(offline.item(choose).isVisible());
}

TEST(MenuTest, HoveringOpensNoMenuAfterAKeyClosedOne)
{
    OfflineWindow offline;
    const auto hover = [&](const char* title) {
        const QPoint place = centre(menuTitle(offline, QString::fromLatin1(title)));
        QTest::mouseMove(&offline.window(), place - QPoint(3, 0));
        QTest::mouseMove(&offline.window(), place);
        OfflineWindow::settle();
        EXPECT_TRUE(menuTitle(offline, QString::fromLatin1(title)).property("hovered").toBool()) << title;
    };
    clickMenu(offline, QStringLiteral("File"));
    hover("File");
    EXPECT_TRUE(offline.item(choose).isVisible());
    offline.key(Qt::Key_Escape);
    EXPECT_FALSE(offline.item(choose).isVisible());
    hover("Playback");
    EXPECT_FALSE(offline.item(toggle).isVisible());
    EXPECT_FALSE(menuTitle(offline, QStringLiteral("File")).property("highlighted").toBool());
    clickMenu(offline, QStringLiteral("Playback"));
    EXPECT_TRUE(offline.item(toggle).isVisible());
    hover("File");
    EXPECT_TRUE(offline.item(choose).isVisible()) << "menus follow the pointer once one is open";
    clickMenu(offline, QStringLiteral("File"));
    EXPECT_FALSE(offline.item(choose).isVisible());
}

} // namespace

} // namespace stackreel
