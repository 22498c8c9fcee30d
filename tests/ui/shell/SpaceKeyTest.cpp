#include "tests/support/window/WindowWithFakes.h"

#include <QTest>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const auto swapButton = QStringLiteral("swapButton");

/// Tests the effect of the Space key, which depends on the focused item. The preview plays at the start of
/// each test.
class SpaceKeyTest : public testing::Test
{
protected:
    SpaceKeyTest()
    {
        m_window.load();
        EXPECT_TRUE(playing());
    }

    bool playing() { return m_window.model().previewPlaying(); }

    WindowWithFakes m_window;
};

TEST_F(SpaceKeyTest, TogglesThePreview)
{
    m_window.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
    m_window.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
}

TEST_F(SpaceKeyTest, DoesNothingWithAModifier)
{
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        m_window.key(Qt::Key_Space, modifier);
        EXPECT_TRUE(playing()) << modifier;
    }
}

TEST_F(SpaceKeyTest, DoesNothingWhileTheSourceCannotBeEdited)
{
    for (const Phase& phase :
         {Phase::empty(), Phase::preparing(), Phase::exporting(), Phase::failed("No video.")}) {
        m_window.model().setPhase(phase);
        m_window.key(Qt::Key_Space);
        EXPECT_TRUE(playing()) << m_window.model().phaseMessage();
    }
    m_window.model().setPhase(Phase::complete("/a.mp4"));
    m_window.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
}

TEST_F(SpaceKeyTest, IsTypedIntoATextField)
{
    m_window.windowModel().setAspectIndex(3);
    WindowWithFakes::settle();
    QQuickItem& field = m_window.item(QStringLiteral("widthField"));
    field.forceActiveFocus(Qt::MouseFocusReason);
    m_window.key(Qt::Key_Space);
    EXPECT_EQ(field.property("text").toString(), QStringLiteral(" "));
    EXPECT_TRUE(playing());
}

TEST_F(SpaceKeyTest, PressesAButtonWithVisualFocus)
{
    const CropRegion top = m_window.model().topRegion();
    m_window.item(swapButton).forceActiveFocus(Qt::TabFocusReason);
    m_window.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
    EXPECT_EQ(m_window.model().bottomRegion(), top);
}

TEST_F(SpaceKeyTest, TogglesThePreviewAfterAButtonWasClicked)
{
    m_window.click(swapButton);
    const CropRegion top = m_window.model().topRegion();
    m_window.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
    EXPECT_EQ(m_window.model().topRegion(), top);
}

TEST_F(SpaceKeyTest, TogglesASwitchWithVisualFocus)
{
    const bool sound = m_window.model().settings().includeAudio;
    m_window.item(QStringLiteral("audioSwitch")).forceActiveFocus(Qt::TabFocusReason);
    m_window.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
    EXPECT_NE(m_window.model().settings().includeAudio, sound);
}

TEST_F(SpaceKeyTest, TogglesThePreviewOnceWhileHeldDown)
{
    // Sent by the window system, because shortcuts are matched before an event reaches the window.
    const auto send = [this](bool press, bool repeated) {
        QTest::simulateEvent(&m_window.window(), press, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "),
                             repeated);
        WindowWithFakes::settle();
    };
    send(true, false);
    EXPECT_FALSE(playing());
    for (int count = 0; count < 3; ++count) {
        send(true, true);
        EXPECT_FALSE(playing());
    }
    send(false, false);
    send(true, false);
    EXPECT_TRUE(playing());
}

} // namespace

} // namespace stackreel
