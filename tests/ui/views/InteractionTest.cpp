#include "tests/ui/views/ViewsTest.h"

#include <QCursor>
#include <QLocale>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

namespace stackreel
{

namespace
{

class InteractionTest : public ViewsTest
{
protected:
    void SetUp() override { QLocale::setDefault(QLocale::c()); }

    /// Drags from a point by a distance, in several steps.
    void drag(QPoint from, QPoint distance)
    {
        press(from);
        moveTo(from + distance / 3);
        moveTo(from + distance);
        release(from + distance);
    }

    /// A point of the window over this time of the strip.
    QPoint at(double seconds)
    {
        const QQuickItem& strip = item("strip");
        const double x = 18 + (strip.width() - 36) * seconds / windowModel().duration();
        return strip.mapToScene(QPointF(std::round(x), 21)).toPoint();
    }

    /// How far a point is on the strip, in seconds.
    double pointSeconds() { return windowModel().duration() / (item("strip").width() - 36); }

    void type(const QString& text)
    {
        key(Qt::Key_A, Qt::ControlModifier);
        for (const QChar character : text)
            QTest::keyClick(&window().window(), character.toLatin1());
        settle();
    }
};

TEST_F(InteractionTest, BothChooseButtonsShowTheOpenPanel)
{
    click("chooseFirstButton");
    EXPECT_EQ(world().openPanel->timesShown(), 1U);
    enter(WindowModel::Ready);
    click("chooseButton");
    EXPECT_EQ(world().openPanel->timesShown(), 3U);
}

TEST_F(InteractionTest, ThePlayButtonPausesAndPlays)
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

TEST_F(InteractionTest, TheMuteButtonMutesAndUnmutes)
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

TEST_F(InteractionTest, TheExportButtonExportsAndCancelsWithoutAsking)
{
    enter(WindowModel::Ready);
    click("exportButton");
    ASSERT_EQ(world().savePanel->timesShown(), 1U);
    world().savePanel->choose("/clips/out.mp4");
    settle();
    ASSERT_EQ(windowModel().phase(), WindowModel::Exporting);
    click("exportButton");
    EXPECT_TRUE(world().exports.back().isCancelled());
    EXPECT_EQ(world().savePanel->timesShown(), 1U);
}

TEST_F(InteractionTest, TheSwapButtonExchangesTheCrops)
{
    enter(WindowModel::Ready);
    const QRectF top = windowModel().topRegion();
    click("swapButton");
    EXPECT_EQ(windowModel().bottomRegion(), top);
    EXPECT_EQ(model().selectedCrop(), 1);
    EXPECT_TRUE(part("bottomCrop", "resizeHandle").isVisible());
    EXPECT_FALSE(part("topCrop", "resizeHandle").isVisible());
}

TEST_F(InteractionTest, TheSwitchChoosesWhetherSoundIsIncluded)
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

TEST_F(InteractionTest, TheSwitchFollowsTheModel)
{
    click("audioSwitch");
    windowModel().setIncludeAudio(true);
    EXPECT_TRUE(item("audioSwitch").property("checked").toBool());
}

TEST_F(InteractionTest, ThePickerOffersTheShapesInTheirOrder)
{
    EXPECT_EQ(windowModel().aspectLabels(), QStringList({QStringLiteral("9:16"), QStringLiteral("4:5"),
                                                         QStringLiteral("1:1"), QStringLiteral("Custom")}));
    QQuickItem& picker = item("aspectPicker");
    EXPECT_EQ(picker.property("displayText").toString(), QStringLiteral("9:16"));
    EXPECT_EQ(picker.property("count").toInt(), 4);
}

TEST_F(InteractionTest, ChoosingAShapeStoresItAndRefitsTheCrops)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().topRegion();
    click("aspectPicker");
    press(centre(item("pickerRow2")));
    release(centre(item("pickerRow2")));
    EXPECT_EQ(model().settings().aspect, OutputAspect::square);
    EXPECT_EQ(item("aspectPicker").property("displayText").toString(), QStringLiteral("1:1"));
    EXPECT_NE(windowModel().topRegion(), before);
    const QRectF body = place(part("topCrop", "body"));
    EXPECT_NEAR(body.width() / body.height(), 2, 1e-6) << "the shape of half a square";
}

TEST_F(InteractionTest, ThePickerIsUsedByKeysAlone)
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

TEST_F(InteractionTest, CustomShowsItsFieldsAndEveryOtherShapeHidesThem)
{
    EXPECT_FALSE(item("customSize").isVisible());
    windowModel().setAspectIndex(3);
    EXPECT_TRUE(item("customSize").isVisible());
    windowModel().setAspectIndex(0);
    EXPECT_FALSE(item("customSize").isVisible());
}

TEST_F(InteractionTest, ATypedSizeIsStoredOnReturnAndRefitsTheCropsOnce)
{
    enter(WindowModel::Ready);
    windowModel().setAspectIndex(3);
    settle();
    QSignalSpy refits(&model(), &AppModel::topRegionChanged);
    focus("widthField");
    type(QStringLiteral("1600"));
    EXPECT_EQ(model().settings().customWidth, 1080) << "not while it is being typed";
    key(Qt::Key_Return);
    EXPECT_EQ(model().settings().customWidth, 1600);
    EXPECT_EQ(refits.count(), 1);
    EXPECT_EQ(item("widthField").property("text").toString(), windowModel().customWidth());
    key(Qt::Key_Tab);
    EXPECT_TRUE(item("heightField").hasActiveFocus());
    EXPECT_EQ(refits.count(), 1) << "leaving the field changes nothing more";
    type(QStringLiteral("900"));
    key(Qt::Key_Tab);
    EXPECT_EQ(model().settings().customHeight, 900);
    EXPECT_EQ(refits.count(), 2);
}

TEST_F(InteractionTest, WhatIsNoNumberIsPutBack)
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

TEST_F(InteractionTest, EscapeGivesUpTyping)
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

TEST_F(InteractionTest, ABlankInAFieldIsTyped)
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

TEST_F(InteractionTest, APressElsewhereEndsTyping)
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

TEST_F(InteractionTest, ACropIsSelectedByAClick)
{
    enter(WindowModel::Ready);
    const QPoint bottom = centre(part("bottomCrop", "body"));
    press(bottom);
    release(bottom);
    EXPECT_EQ(model().selectedCrop(), 1);
}

TEST_F(InteractionTest, ACropFollowsThePointerAndIsSelectedByTheDrag)
{
    enter(WindowModel::Ready);
    const QRectF frame = place("videoFrame");
    const QRectF before = windowModel().bottomRegion();
    const QPoint from = centre(part("bottomCrop", "body"));
    press(from);
    EXPECT_EQ(model().selectedCrop(), 0) << "not before it moves";
    moveTo(from + QPoint(-60, 20));
    EXPECT_EQ(model().selectedCrop(), 1);
    moveTo(from + QPoint(-30, 10));
    EXPECT_NEAR(windowModel().bottomRegion().x(), before.x() - 30 / frame.width(), 1e-9);
    EXPECT_NEAR(windowModel().bottomRegion().y(), before.y() + 10 / frame.height(), 1e-9);
    release(from + QPoint(-30, 10));
    EXPECT_EQ(windowModel().bottomRegion().size(), before.size());
}

TEST_F(InteractionTest, ACropDraggedBackToItsStartIsWhereItWas)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().topRegion();
    const QPoint from = centre(part("topCrop", "body"));
    press(from);
    moveTo(from + QPoint(500, 300));
    moveTo(from);
    release(from);
    EXPECT_EQ(windowModel().topRegion(), before);
}

TEST_F(InteractionTest, ACropDraggedFarIsPinnedToTheEdge)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().topRegion();
    drag(centre(part("topCrop", "body")), QPoint(600, 0));
    EXPECT_EQ(windowModel().topRegion().x(), 1 - before.width());
    EXPECT_EQ(windowModel().topRegion().size(), before.size());
}

TEST_F(InteractionTest, TheHandleResizesAboutTheOtherCornerAndWinsOverTheBody)
{
    enter(WindowModel::Ready);
    const QRectF frame = place("videoFrame");
    const QRectF before = windowModel().topRegion();
    drag(centre(part("topCrop", "resizeHandle")), QPoint(-90, 20));
    const QRectF after = windowModel().topRegion();
    EXPECT_EQ(after.topLeft(), before.topLeft());
    EXPECT_NEAR(after.width(), before.width() - 90 / frame.width(), 1e-9);
    EXPECT_NEAR(after.width() * frame.width() / (after.height() * frame.height()), 1.125, 1e-9);
}

TEST_F(InteractionTest, AMostlyVerticalResizeFollowsTheHeightAndATieTheWidth)
{
    enter(WindowModel::Ready);
    const QRectF frame = place("videoFrame");
    const QRectF before = windowModel().topRegion();
    drag(centre(part("topCrop", "resizeHandle")), QPoint(-20, -60));
    EXPECT_NEAR(windowModel().topRegion().height(), before.height() - 60 / frame.height(), 1e-9);
    model().setTopRegion({before.x(), before.y(), before.width(), before.height()});
    settle();
    drag(centre(part("topCrop", "resizeHandle")), QPoint(-60, 60));
    EXPECT_NEAR(windowModel().topRegion().width(), before.width() - 60 / frame.width(), 1e-9);
}

TEST_F(InteractionTest, ACropIsMovedAndResizedByKeys)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().bottomRegion();
    part("bottomCrop", "body").forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Left);
    EXPECT_NEAR(windowModel().bottomRegion().x(), before.x() - 1.0 / 1920, 1e-9);
    EXPECT_EQ(model().selectedCrop(), 1);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_NEAR(windowModel().bottomRegion().y(), before.y() - 10.0 / 1080, 1e-9);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_NEAR(windowModel().bottomRegion().width(), before.width() - 1.0 / 1920, 1e-9);
}

TEST_F(InteractionTest, AClickOnTheStripSeeks)
{
    enter(WindowModel::Ready);
    press(at(8));
    EXPECT_NEAR(model().currentTime(), 8, pointSeconds());
    EXPECT_FALSE(model().previewPlaying());
    release(at(8));
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(InteractionTest, ThePlayheadFollowsThePointer)
{
    enter(WindowModel::Ready);
    press(at(8));
    moveTo(at(13));
    EXPECT_NEAR(model().currentTime(), 13, pointSeconds());
    moveTo(at(4) + QPoint(0, -300));
    EXPECT_NEAR(model().currentTime(), 4, pointSeconds()) << "however far above";
    release(at(4));
    EXPECT_EQ(model().trimStart(), 0);
    EXPECT_EQ(model().trimEnd(), 20);
}

TEST_F(InteractionTest, BothHandlesAreDraggedWithoutAJump)
{
    enter(WindowModel::Ready);
    press(at(0) + QPoint(10, 0));
    EXPECT_NEAR(model().trimStart(), 0, 1e-9);
    moveTo(at(5) + QPoint(10, 0));
    release(at(5) + QPoint(10, 0));
    EXPECT_NEAR(model().trimStart(), 5, pointSeconds());
    press(at(20) - QPoint(17, 0));
    EXPECT_NEAR(model().trimEnd(), 20, 1e-9);
    moveTo(at(12) - QPoint(17, 0));
    release(at(12) - QPoint(17, 0));
    EXPECT_NEAR(model().trimEnd(), 12, pointSeconds());
    EXPECT_EQ(text(item("rangeText")), QStringLiteral("0:05 to 0:12"));
    EXPECT_EQ(text(item("selectedText")), QStringLiteral("0:07 selected"));
}

TEST_F(InteractionTest, HandlesAreGrabbedByTheirTipsAboveTheStrip)
{
    enter(WindowModel::Ready);
    press(at(0) - QPoint(0, 22));
    EXPECT_TRUE(item("trimStartHandle").property("active").toBool());
    release(at(0) - QPoint(0, 22));
}

TEST_F(InteractionTest, AHoveredHandleGrowsAndShowsTheOpenHand)
{
    enter(WindowModel::Ready);
    moveTo(at(10));
    EXPECT_EQ(item("trimTimeline").cursor().shape(), Qt::ArrowCursor);
    moveTo(at(20) - QPoint(15, 0));
    EXPECT_TRUE(item("trimEndHandle").property("active").toBool());
    EXPECT_EQ(item("trimTimeline").cursor().shape(), Qt::OpenHandCursor);
    EXPECT_TRUE(soon([this] { return item("trimEndHandle").property("growth").toDouble() == 1.1; }));
    settle();
    EXPECT_NEAR(place(part("trimEndHandle", "face")).width(), 13 * 1.1, 0.01);
    EXPECT_NEAR(place(part("trimEndHandle", "face")).height(), 46 * 1.1, 0.01);
    EXPECT_NEAR(place(part("trimEndHandle", "face")).center().x(), place("trimEndHandle").center().x(), 0.01);
    press(at(20) - QPoint(15, 0));
    EXPECT_EQ(item("trimTimeline").cursor().shape(), Qt::ClosedHandCursor);
    release(at(20) - QPoint(15, 0));
    EXPECT_EQ(item("trimTimeline").cursor().shape(), Qt::OpenHandCursor);
    moveTo(at(10) - QPoint(0, 200));
    EXPECT_FALSE(item("trimEndHandle").property("active").toBool());
    EXPECT_TRUE(soon([this] { return item("trimEndHandle").property("growth").toDouble() == 1; }));
}

TEST_F(InteractionTest, HoveringDoesNothingDuringADrag)
{
    enter(WindowModel::Ready);
    press(at(10));
    moveTo(at(20));
    EXPECT_FALSE(item("trimEndHandle").property("active").toBool());
    release(at(20));
}

TEST_F(InteractionTest, ATimelineThatGoesDuringADragEndsIt)
{
    enter(WindowModel::Ready);
    press(at(20));
    moveTo(at(15));
    model().chooseSource();
    world().openPanel->choose("/clips/another.mov");
    settle();
    ASSERT_FALSE(item("timeline").isVisible());
    release(at(15));
    world().inspections.back().task().complete(OfflineWindow::clip());
    world().previews.back().task().complete("/clips/another.mov");
    settle();
    EXPECT_FALSE(item("trimEndHandle").property("active").toBool());
    EXPECT_EQ(model().trimEnd(), 20);
}

TEST_F(InteractionTest, TheArrowsStepTheHandlesAndThePlayhead)
{
    enter(WindowModel::Ready);
    focus("trimStartHandle");
    key(Qt::Key_Right);
    key(Qt::Key_Up);
    EXPECT_DOUBLE_EQ(model().trimStart(), 0.5);
    key(Qt::Key_Left);
    EXPECT_DOUBLE_EQ(model().trimStart(), 0.25);
    focus("trimEndHandle");
    key(Qt::Key_Down);
    EXPECT_DOUBLE_EQ(model().trimEnd(), 19.75);
    focus("videoPosition");
    model().seekPreview(10);
    key(Qt::Key_Right);
    EXPECT_DOUBLE_EQ(model().currentTime(), 10.25);
}

TEST_F(InteractionTest, TheThumbnailsAreShownWhenTheyCome)
{
    enter(WindowModel::Ready);
    const double scale = window().window().effectiveDevicePixelRatio();
    const QPoint place = (item("thumbnails").mapToScene(QPointF(100, 21)) * scale).toPoint();
    const QColor before = window().screenshot().pixelColor(place);
    window().finishThumbnails();
    EXPECT_NE(window().screenshot().pixelColor(place), before);
}

TEST_F(InteractionTest, TheFocusGoesThroughTheWindowInReadingOrder)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    focus("chooseButton");
    const std::vector<QQuickItem*> order = {
        &part("topCrop", "body"), &part("bottomCrop", "body"), &item("playButton"),    &item("muteButton"),
        &item("videoPosition"),   &item("trimStartHandle"),    &item("trimEndHandle"), &item("aspectPicker"),
        &item("widthField"),      &item("heightField"),        &item("swapButton"),    &item("audioSwitch"),
        &item("exportButton")};
    for (QQuickItem* next : order) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(next->hasActiveFocus()) << next->objectName().toStdString();
    }
    key(Qt::Key_Backtab);
    EXPECT_TRUE(item("audioSwitch").hasActiveFocus());
}

TEST_F(InteractionTest, TheFocusShowsWhenItCameByKeysAlone)
{
    enter(WindowModel::Ready);
    focus("muteButton");
    EXPECT_TRUE(part("muteButton", "focusRing").isVisible());
    click("playButton");
    EXPECT_FALSE(part("muteButton", "focusRing").isVisible());
    EXPECT_FALSE(part("playButton", "focusRing").isVisible());
    focus("trimStartHandle");
    EXPECT_TRUE(part("trimStartHandle", "focusRing").isVisible());
    press(centre(part("topCrop", "body")));
    release(centre(part("topCrop", "body")));
    EXPECT_TRUE(part("topCrop", "body").hasActiveFocus());
    EXPECT_FALSE(part("topCrop", "focusRing").isVisible());
}

TEST_F(InteractionTest, ReturnAndTheBlankPressAFocusedButton)
{
    enter(WindowModel::Ready);
    focus("swapButton");
    key(Qt::Key_Return);
    EXPECT_EQ(model().selectedCrop(), 1);
    key(Qt::Key_Space);
    EXPECT_EQ(model().selectedCrop(), 0);
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(InteractionTest, AHintShowsWhileThePointerRests)
{
    enter(WindowModel::Ready);
    moveTo(centre(item("muteButton")));
    EXPECT_TRUE(soon([this] { return window().hasItem(QStringLiteral("hintText")); }));
    EXPECT_EQ(text(item("hintText")), QStringLiteral("Unmute preview"));
}

TEST_F(InteractionTest, NothingCanBeDroppedOnTheWindow)
{
    for (QQuickItem* each : window().window().contentItem()->findChildren<QQuickItem*>())
        EXPECT_FALSE(each->flags().testFlag(QQuickItem::ItemAcceptsDrops))
            << each->objectName().toStdString();
}

} // namespace

} // namespace stackreel
