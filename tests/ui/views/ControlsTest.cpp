#include "tests/ui/views/ViewsTest.h"

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

namespace stackreel
{

namespace
{

class ControlsTest : public ViewsTest
{
protected:
    void SetUp() override { QLocale::setDefault(QLocale::c()); }

    void type(const QString& text)
    {
        key(Qt::Key_A, Qt::ControlModifier);
        for (const QChar character : text)
            QTest::keyClick(&window().window(), character.toLatin1());
        settle();
    }
};

TEST_F(ControlsTest, BothChooseButtonsShowTheOpenPanel)
{
    click("chooseFirstButton");
    EXPECT_EQ(fakes().openPanel->timesShown(), 1U);
    enter(WindowModel::Ready);
    click("chooseButton");
    EXPECT_EQ(fakes().openPanel->timesShown(), 3U);
}

TEST_F(ControlsTest, ThePlayButtonPausesAndPlays)
{
    enter(WindowModel::Ready);
    ASSERT_TRUE(model().previewPlaying());
    EXPECT_EQ(item("playButton").property("hint").toString(), QStringLiteral("Pause preview (Space)"));
    EXPECT_TRUE(item("playButton").property("symbol").toString().endsWith(QStringLiteral("pause-fill.svg")));
    click("playButton");
    EXPECT_FALSE(model().previewPlaying());
    EXPECT_EQ(item("playButton").property("hint").toString(), QStringLiteral("Play preview (Space)"));
    EXPECT_TRUE(item("playButton").property("symbol").toString().endsWith(QStringLiteral("play-fill.svg")));
    click("playButton");
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(ControlsTest, TheMuteButtonMutesAndUnmutes)
{
    enter(WindowModel::Ready);
    ASSERT_TRUE(model().previewMuted());
    EXPECT_EQ(item("muteButton").property("hint").toString(), QStringLiteral("Unmute preview"));
    EXPECT_TRUE(item("muteButton").property("symbol").toString().endsWith(QStringLiteral("slash.svg")));
    click("muteButton");
    EXPECT_FALSE(model().previewMuted());
    EXPECT_FALSE(window().player().isMuted());
    EXPECT_EQ(item("muteButton").property("hint").toString(), QStringLiteral("Mute preview"));
    EXPECT_TRUE(item("muteButton").property("symbol").toString().endsWith(QStringLiteral("wave.svg")));
}

TEST_F(ControlsTest, TheExportButtonExportsAndCancelsWithoutAsking)
{
    enter(WindowModel::Ready);
    click("exportButton");
    ASSERT_EQ(fakes().savePanel->timesShown(), 1U);
    fakes().savePanel->choose("/clips/out.mp4");
    settle();
    ASSERT_EQ(windowModel().phase(), WindowModel::Exporting);
    click("exportButton");
    EXPECT_TRUE(fakes().exports.back().isCancelled());
    EXPECT_EQ(fakes().savePanel->timesShown(), 1U);
}

TEST_F(ControlsTest, TheSwapButtonSwapsTheCrops)
{
    enter(WindowModel::Ready);
    const QRectF top = windowModel().topRegion();
    click("swapButton");
    EXPECT_EQ(windowModel().bottomRegion(), top);
    EXPECT_EQ(model().selectedCrop(), 1);
    EXPECT_TRUE(child("bottomCrop", "resizeHandle").isVisible());
    EXPECT_FALSE(child("topCrop", "resizeHandle").isVisible());
}

TEST_F(ControlsTest, TheSwitchSetsWhetherAudioIsIncluded)
{
    ASSERT_TRUE(model().settings().includeAudio);
    click("audioSwitch");
    EXPECT_FALSE(model().settings().includeAudio);
    EXPECT_FALSE(item("audioSwitch").property("checked").toBool());
    focus("audioSwitch");
    key(Qt::Key_Space);
    EXPECT_TRUE(model().settings().includeAudio);
    EXPECT_TRUE(item("audioSwitch").property("checked").toBool());
}

TEST_F(ControlsTest, TheSwitchFollowsTheModel)
{
    click("audioSwitch");
    windowModel().setIncludeAudio(true);
    EXPECT_TRUE(item("audioSwitch").property("checked").toBool());
}

TEST_F(ControlsTest, ThePickerListsTheAspectRatiosInOrder)
{
    EXPECT_EQ(windowModel().aspectLabels(), QStringList({QStringLiteral("9:16"), QStringLiteral("4:5"),
                                                         QStringLiteral("1:1"), QStringLiteral("Custom")}));
    QQuickItem& picker = item("aspectPicker");
    EXPECT_EQ(picker.property("displayText").toString(), QStringLiteral("9:16"));
    EXPECT_EQ(picker.property("count").toInt(), 4);
}

TEST_F(ControlsTest, ChoosingAnAspectRatioStoresItAndAdaptsTheCrops)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().topRegion();
    click("aspectPicker");
    press(centre(item("pickerRow2")));
    release(centre(item("pickerRow2")));
    EXPECT_EQ(model().settings().aspect, OutputAspect::square);
    EXPECT_EQ(item("aspectPicker").property("displayText").toString(), QStringLiteral("1:1"));
    EXPECT_NE(windowModel().topRegion(), before);
    const QRectF body = geometry(child("topCrop", "body"));
    EXPECT_NEAR(body.width() / body.height(), 2, 1e-6) << "the shape of half a square";
}

TEST_F(ControlsTest, ThePickerWorksByKeyboard)
{
    focus("aspectPicker");
    key(Qt::Key_Down);
    EXPECT_EQ(model().settings().aspect, OutputAspect::feed);
    key(Qt::Key_Return);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(model().settings().aspect, OutputAspect::custom);
}

TEST_F(ControlsTest, TheSizeFieldsAreVisibleOnlyForACustomSize)
{
    EXPECT_FALSE(item("customSize").isVisible());
    windowModel().setAspectIndex(3);
    EXPECT_TRUE(item("customSize").isVisible());
    windowModel().setAspectIndex(0);
    EXPECT_FALSE(item("customSize").isVisible());
}

TEST_F(ControlsTest, ATypedSizeIsStoredOnReturnAndAdaptsTheCropsOnce)
{
    enter(WindowModel::Ready);
    windowModel().setAspectIndex(3);
    settle();
    QSignalSpy adaptations(&model(), &AppModel::topRegionChanged);
    focus("widthField");
    type(QStringLiteral("1600"));
    EXPECT_EQ(model().settings().customWidth, 1080) << "not while it is being typed";
    key(Qt::Key_Return);
    EXPECT_EQ(model().settings().customWidth, 1600);
    EXPECT_EQ(adaptations.count(), 1);
    EXPECT_EQ(item("widthField").property("text").toString(), windowModel().customWidth());
    key(Qt::Key_Tab);
    EXPECT_TRUE(item("heightField").hasActiveFocus());
    EXPECT_EQ(adaptations.count(), 1) << "leaving the field changes nothing more";
    type(QStringLiteral("900"));
    key(Qt::Key_Tab);
    EXPECT_EQ(model().settings().customHeight, 900);
    EXPECT_EQ(adaptations.count(), 2);
}

TEST_F(ControlsTest, RestoresTheSizeWhenTheTextIsNoInteger)
{
    windowModel().setAspectIndex(3);
    settle();
    for (const char* nonsense : {"wide", "", "12.5", "1e3"}) {
        focus("widthField");
        type(QString::fromLatin1(nonsense));
        if (*nonsense == '\0')
            key(Qt::Key_Backspace);
        key(Qt::Key_Return);
        EXPECT_EQ(model().settings().customWidth, 1080) << nonsense;
        EXPECT_EQ(item("widthField").property("text").toString(), windowModel().customWidth()) << nonsense;
    }
}

TEST_F(ControlsTest, EscapeDiscardsTheTypedSize)
{
    windowModel().setAspectIndex(3);
    settle();
    focus("widthField");
    type(QStringLiteral("999"));
    key(Qt::Key_Escape);
    EXPECT_EQ(item("widthField").property("text").toString(), windowModel().customWidth());
    key(Qt::Key_Return);
    EXPECT_EQ(model().settings().customWidth, 1080);
}

TEST_F(ControlsTest, SpaceIsTypedIntoAFocusedField)
{
    enter(WindowModel::Ready);
    windowModel().setAspectIndex(3);
    settle();
    focus("widthField");
    const bool playing = model().previewPlaying();
    type(QStringLiteral("1 2"));
    EXPECT_EQ(item("widthField").property("text").toString(), QStringLiteral("1 2"));
    EXPECT_EQ(model().previewPlaying(), playing);
}

TEST_F(ControlsTest, APressOutsideAFieldEndsEditing)
{
    windowModel().setAspectIndex(3);
    settle();
    focus("widthField");
    type(QStringLiteral("1200"));
    const QPoint gap = item("inspector").mapToScene(QPointF(-9, 100)).toPoint();
    press(gap);
    release(gap);
    EXPECT_EQ(model().settings().customWidth, 1200);
    EXPECT_FALSE(item("widthField").hasActiveFocus());
}

} // namespace

} // namespace stackreel
