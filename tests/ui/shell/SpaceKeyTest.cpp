#include "tests/support/window/OfflineWindow.h"

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
        m_offline.load();
        EXPECT_TRUE(playing());
    }

    bool playing() { return m_offline.model().previewPlaying(); }

    OfflineWindow m_offline;
};

TEST_F(SpaceKeyTest, TogglesThePreview)
{
    m_offline.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
    m_offline.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
}

TEST_F(SpaceKeyTest, DoesNothingWithAModifier)
{
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        m_offline.key(Qt::Key_Space, modifier);
        EXPECT_TRUE(playing()) << modifier;
    }
}

TEST_F(SpaceKeyTest, DoesNothingWhileTheSourceCannotBeEdited)
{
    for (const Phase& phase :
         {Phase::empty(), Phase::preparing(), Phase::exporting(), Phase::failed("No video.")}) {
        m_offline.model().setPhase(phase);
        m_offline.key(Qt::Key_Space);
        EXPECT_TRUE(playing()) << m_offline.model().phaseMessage();
    }
    m_offline.model().setPhase(Phase::complete("/a.mp4"));
    m_offline.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
}

TEST_F(SpaceKeyTest, IsTypedIntoATextField)
{
    m_offline.windowModel().setAspectIndex(3);
    OfflineWindow::settle();
    QQuickItem& field = m_offline.item(QStringLiteral("widthField"));
    field.forceActiveFocus(Qt::MouseFocusReason);
    m_offline.key(Qt::Key_Space);
    EXPECT_EQ(field.property("text").toString(), QStringLiteral(" "));
    EXPECT_TRUE(playing());
}

TEST_F(SpaceKeyTest, PressesAButtonWithVisualFocus)
{
    const CropRegion top = m_offline.model().topRegion();
    m_offline.item(swapButton).forceActiveFocus(Qt::TabFocusReason);
    m_offline.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
    EXPECT_EQ(m_offline.model().bottomRegion(), top);
}

TEST_F(SpaceKeyTest, TogglesThePreviewAfterAButtonWasClicked)
{
    m_offline.click(swapButton);
    const CropRegion top = m_offline.model().topRegion();
    m_offline.key(Qt::Key_Space);
    EXPECT_FALSE(playing());
    EXPECT_EQ(m_offline.model().topRegion(), top);
}

TEST_F(SpaceKeyTest, TogglesASwitchWithVisualFocus)
{
    const bool sound = m_offline.model().settings().includeAudio;
    m_offline.item(QStringLiteral("audioSwitch")).forceActiveFocus(Qt::TabFocusReason);
    m_offline.key(Qt::Key_Space);
    EXPECT_TRUE(playing());
    EXPECT_NE(m_offline.model().settings().includeAudio, sound);
}

TEST_F(SpaceKeyTest, TogglesThePreviewOnceWhileHeldDown)
{
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    m_offline.key(Qt::Key_Space);
    QCoreApplication::sendEvent(&m_offline.window(), &repeated);
    EXPECT_FALSE(playing());
}

} // namespace

} // namespace stackreel
