#include "tests/ui/views/ViewsTest.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace stackreel
{

namespace
{

class KeyboardTest : public ViewsTest
{
protected:
    /// Presses a key, repeats it three times as if it were held down, and releases it.
    void hold(Qt::Key key)
    {
        const auto send = [&](QEvent::Type type, bool repeated) {
            QKeyEvent event(type, key, Qt::NoModifier, QString(), repeated);
            QCoreApplication::sendEvent(&window().window(), &event);
        };
        send(QEvent::KeyPress, false);
        for (int repeats = 0; repeats < 3; ++repeats) {
            send(QEvent::KeyRelease, true);
            send(QEvent::KeyPress, true);
        }
        send(QEvent::KeyRelease, false);
        settle();
    }
};

TEST_F(KeyboardTest, TabMovesTheFocusInReadingOrder)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    focus("chooseButton");
    const std::vector<QQuickItem*> order = {
        &child("topCrop", "body"), &child("bottomCrop", "body"), &item("playButton"),
        &item("muteButton"),       &item("videoPosition"),       &item("trimStartHandle"),
        &item("trimEndHandle"),    &item("aspectPicker"),        &item("widthField"),
        &item("heightField"),      &item("swapButton"),          &item("audioSwitch"),
        &item("exportButton")};
    for (QQuickItem* next : order) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(next->hasActiveFocus()) << next->objectName().toStdString();
    }
    key(Qt::Key_Backtab);
    EXPECT_TRUE(item("audioSwitch").hasActiveFocus());
}

TEST_F(KeyboardTest, ShowsTheFocusRingOnlyAfterKeyboardFocus)
{
    enter(WindowModel::Ready);
    focus("muteButton");
    EXPECT_TRUE(child("muteButton", "focusRing").isVisible());
    click("playButton");
    EXPECT_FALSE(child("muteButton", "focusRing").isVisible());
    EXPECT_FALSE(child("playButton", "focusRing").isVisible());
    focus("trimStartHandle");
    EXPECT_TRUE(child("trimStartHandle", "focusRing").isVisible());
    press(centre(child("topCrop", "body")));
    release(centre(child("topCrop", "body")));
    EXPECT_TRUE(child("topCrop", "body").hasActiveFocus());
    EXPECT_FALSE(child("topCrop", "focusRing").isVisible());
}

TEST_F(KeyboardTest, ReturnAndSpacePressAFocusedButton)
{
    enter(WindowModel::Ready);
    focus("swapButton");
    key(Qt::Key_Return);
    EXPECT_EQ(model().selectedCrop(), 1);
    key(Qt::Key_Space);
    EXPECT_EQ(model().selectedCrop(), 0);
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(KeyboardTest, AKeyHeldDownPressesOnce)
{
    enter(WindowModel::Ready);
    focus("swapButton");
    hold(Qt::Key_Space);
    EXPECT_EQ(model().selectedCrop(), 1);
    hold(Qt::Key_Return);
    EXPECT_EQ(model().selectedCrop(), 0);
    focus("audioSwitch");
    hold(Qt::Key_Space);
    EXPECT_FALSE(model().settings().includeAudio);
}

} // namespace

} // namespace stackreel
