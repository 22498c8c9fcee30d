#include "tests/support/window/OfflineWindow.h"

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

void clickMenu(OfflineWindow& offline, const QString& menuTitle)
{
    for (QQuickItem* title : offline.item(QStringLiteral("menuBar")).findChildren<QQuickItem*>())
        if (title->property("text").toString() == menuTitle && title->inherits("QQuickMenuBarItem")) {
            const QPoint centre =
                title->mapToScene(QPointF(title->width() / 2, title->height() / 2)).toPoint();
            QTest::mouseClick(&offline.window(), Qt::LeftButton, Qt::NoModifier, centre);
            OfflineWindow::settle();
            return;
        }
    FAIL() << "no menu " << menuTitle.toStdString();
}

/// Opens the menu with this title and clicks on one of its items.
void clickItem(OfflineWindow& offline, const QString& menuTitle, const QString& item)
{
    clickMenu(offline, menuTitle);
    offline.click(item);
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

TEST(MenuTest, ThePlaybackItemNamesWhatItWillDo)
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

TEST(MenuTest, ChoosingAndCheckingAreAlwaysEnabled)
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
        EXPECT_EQ(offline.world().openPanel->timesShown(), ++shown) << offline.model().phaseMessage();
    }
}

TEST(MenuTest, ChooseVideoOpensTheSourceChooser)
{
    OfflineWindow offline;
    clickItem(offline, QStringLiteral("File"), choose);
    EXPECT_EQ(offline.world().openPanel->timesShown(), 1U);
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

TEST(MenuTest, QuitClosingAndControlQAskForTheEnd)
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
              QStringLiteral("Version ") + QStringLiteral(STACKREEL_VERSION));
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
    EXPECT_EQ(offline.world().openPanel->timesShown(), 1U);
}

/// A button that shows the focus of the keyboard, and what takes it away for a while.
class FocusTest : public testing::Test
{
protected:
    FocusTest()
    {
        m_offline.load();
        m_button.forceActiveFocus(Qt::TabFocusReason);
    }

    void expectFocusIsBack()
    {
        EXPECT_TRUE(m_button.hasActiveFocus());
        EXPECT_TRUE(m_button.property("visualFocus").toBool());
    }

    OfflineWindow m_offline;
    QQuickItem& m_button = m_offline.item(QStringLiteral("swapButton"));
};

TEST_F(FocusTest, ReturnsFromTheMenus)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Right);
    EXPECT_FALSE(m_button.hasActiveFocus());
    m_offline.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, ReturnsAfterACommand)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Right);
    m_offline.key(Qt::Key_Down);
    m_offline.key(Qt::Key_Return);
    ASSERT_EQ(m_offline.world().openPanel->timesShown(), 2U);
    expectFocusIsBack();
}

TEST_F(FocusTest, ReturnsFromTheAboutBox)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Down);
    m_offline.key(Qt::Key_Return);
    EXPECT_TRUE(m_offline.item(QStringLiteral("closeAbout")).hasActiveFocus());
    m_offline.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, ReturnsFromAMenuThatWasClickedOpen)
{
    clickItem(m_offline, QStringLiteral("File"), choose);
    EXPECT_TRUE(m_button.hasActiveFocus());
}

TEST_F(FocusTest, TheBlankInAnOpenMenuIsNotForThePreview)
{
    ASSERT_TRUE(m_offline.model().previewPlaying());
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Space);
    EXPECT_TRUE(m_offline.model().previewPlaying());
    m_offline.key(Qt::Key_Escape);
    clickMenu(m_offline, QStringLiteral("File"));
    m_offline.key(Qt::Key_Space);
    EXPECT_TRUE(m_offline.model().previewPlaying());
}

TEST_F(FocusTest, TheKeysOfCommandsWorkOverEverythingThatIsOpen)
{
    const auto open = [this](const QString& what) {
        if (what == QLatin1String("menu"))
            m_offline.key(Qt::Key_F10);
        else if (what == QLatin1String("picker"))
            m_offline.click(QStringLiteral("aspectPicker"));
        else
            clickItem(m_offline, QStringLiteral("Stackreel"), QStringLiteral("aboutItem"));
    };
    QSignalSpy asked(&m_offline.actions(), &WindowActions::quitRequested);
    std::size_t shown = m_offline.world().openPanel->timesShown();
    int quits = 0;
    for (const auto& what : {QStringLiteral("menu"), QStringLiteral("picker"), QStringLiteral("about")}) {
        open(what);
        m_offline.key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(m_offline.world().openPanel->timesShown(), ++shown) << what.toStdString();
        m_offline.key(Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(asked.count(), ++quits) << what.toStdString();
        m_offline.key(Qt::Key_Escape);
    }
}

} // namespace

} // namespace stackreel
