#include "tests/ui/shell/Menus.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

/// A button has visual focus before a menu or dialog opens. Each test checks that it has the focus again
/// afterwards.
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

TEST_F(FocusTest, IsRestoredAfterAMenuCloses)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Right);
    EXPECT_FALSE(m_button.hasActiveFocus());
    m_offline.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterAMenuCommand)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Right);
    m_offline.key(Qt::Key_Down);
    m_offline.key(Qt::Key_Return);
    ASSERT_EQ(m_offline.fakes().openPanel->timesShown(), 2U);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterTheAboutDialogCloses)
{
    m_offline.key(Qt::Key_F10);
    m_offline.key(Qt::Key_Return);
    EXPECT_TRUE(m_offline.item(QStringLiteral("closeAbout")).hasActiveFocus());
    m_offline.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterAMenuOpenedByAClick)
{
    clickItem(m_offline, QStringLiteral("File"), QStringLiteral("chooseVideoItem"));
    EXPECT_TRUE(m_button.hasActiveFocus());
}

TEST_F(FocusTest, SpaceDoesNotToggleThePreviewWhileAMenuIsOpen)
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

TEST_F(FocusTest, ShortcutsWorkWhileAMenuPickerOrDialogIsOpen)
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
    std::size_t shown = m_offline.fakes().openPanel->timesShown();
    int quits = 0;
    for (const auto& what : {QStringLiteral("menu"), QStringLiteral("picker"), QStringLiteral("about")}) {
        open(what);
        m_offline.key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(m_offline.fakes().openPanel->timesShown(), ++shown) << what.toStdString();
        m_offline.key(Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(asked.count(), ++quits) << what.toStdString();
        m_offline.key(Qt::Key_Escape);
    }
}

} // namespace

} // namespace stackreel
