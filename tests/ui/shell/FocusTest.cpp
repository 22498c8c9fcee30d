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
        m_window.load();
        m_button.forceActiveFocus(Qt::TabFocusReason);
    }

    void expectFocusIsBack()
    {
        EXPECT_TRUE(m_button.hasActiveFocus());
        EXPECT_TRUE(m_button.property("visualFocus").toBool());
    }

    WindowWithFakes m_window;
    QQuickItem& m_button = m_window.item(QStringLiteral("swapButton"));
};

TEST_F(FocusTest, IsRestoredAfterAMenuCloses)
{
    m_window.key(Qt::Key_F10);
    m_window.key(Qt::Key_Right);
    EXPECT_FALSE(m_button.hasActiveFocus());
    m_window.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterAMenuCommand)
{
    m_window.key(Qt::Key_F10);
    m_window.key(Qt::Key_Right);
    m_window.key(Qt::Key_Down);
    m_window.key(Qt::Key_Return);
    ASSERT_EQ(m_window.fakes().openPanel->timesShown(), 2U);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterTheAboutDialogCloses)
{
    m_window.key(Qt::Key_F10);
    m_window.key(Qt::Key_Return);
    EXPECT_TRUE(m_window.item(QStringLiteral("closeAbout")).hasActiveFocus());
    m_window.key(Qt::Key_Escape);
    expectFocusIsBack();
}

TEST_F(FocusTest, IsRestoredAfterAMenuOpenedByAClick)
{
    clickItem(m_window, QStringLiteral("File"), QStringLiteral("chooseVideoItem"));
    EXPECT_TRUE(m_button.hasActiveFocus());
}

TEST_F(FocusTest, SpaceDoesNotToggleThePreviewWhileAMenuIsOpen)
{
    ASSERT_TRUE(m_window.model().previewPlaying());
    m_window.key(Qt::Key_F10);
    m_window.key(Qt::Key_Space);
    EXPECT_TRUE(m_window.model().previewPlaying());
    m_window.key(Qt::Key_Escape);
    clickMenu(m_window, QStringLiteral("File"));
    m_window.key(Qt::Key_Space);
    EXPECT_TRUE(m_window.model().previewPlaying());
}

TEST_F(FocusTest, ShortcutsWorkWhileAMenuPickerOrDialogIsOpen)
{
    const auto open = [this](const QString& what) {
        if (what == QLatin1String("menu"))
            m_window.key(Qt::Key_F10);
        else if (what == QLatin1String("picker"))
            m_window.click(QStringLiteral("aspectPicker"));
        else
            clickItem(m_window, QStringLiteral("Stackreel"), QStringLiteral("aboutItem"));
    };
    QSignalSpy asked(&m_window.actions(), &WindowActions::quitRequested);
    std::size_t shown = m_window.fakes().openPanel->timesShown();
    int quits = 0;
    for (const auto& what : {QStringLiteral("menu"), QStringLiteral("picker"), QStringLiteral("about")}) {
        open(what);
        m_window.key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(m_window.fakes().openPanel->timesShown(), ++shown) << what.toStdString();
        m_window.key(Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(asked.count(), ++quits) << what.toStdString();
        m_window.key(Qt::Key_Escape);
    }
}

} // namespace

} // namespace stackreel
