#include "tests/ui/views/ViewsTest.h"

#include <QCursor>

#include <cmath>

namespace stackreel
{

namespace
{

class TimelineDragTest : public ViewsTest
{
protected:
    /// A point of the window over this time of the strip.
    QPoint at(double seconds)
    {
        const QQuickItem& strip = item("strip");
        const double x = 18 + (strip.width() - 36) * seconds / windowModel().duration();
        return strip.mapToScene(QPointF(std::round(x), 21)).toPoint();
    }

    /// How far a point is on the strip, in seconds.
    double pointSeconds() { return windowModel().duration() / (item("strip").width() - 36); }
};

TEST_F(TimelineDragTest, AClickOnTheStripSeeks)
{
    enter(WindowModel::Ready);
    press(at(8));
    EXPECT_NEAR(model().currentTime(), 8, pointSeconds());
    EXPECT_FALSE(model().previewPlaying());
    release(at(8));
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(TimelineDragTest, ThePlayheadFollowsThePointer)
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

TEST_F(TimelineDragTest, BothHandlesAreDraggedWithoutAJump)
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

TEST_F(TimelineDragTest, HandlesAreGrabbedByTheirTipsAboveTheStrip)
{
    enter(WindowModel::Ready);
    press(at(0) - QPoint(0, 22));
    EXPECT_TRUE(item("trimStartHandle").property("active").toBool());
    release(at(0) - QPoint(0, 22));
}

TEST_F(TimelineDragTest, AHoveredHandleGrowsAndShowsTheOpenHand)
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

TEST_F(TimelineDragTest, HoveringDoesNothingDuringADrag)
{
    enter(WindowModel::Ready);
    press(at(10));
    moveTo(at(20));
    EXPECT_FALSE(item("trimEndHandle").property("active").toBool());
    release(at(20));
}

TEST_F(TimelineDragTest, ATimelineThatGoesDuringADragEndsIt)
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

TEST_F(TimelineDragTest, TheArrowsStepTheHandlesAndThePlayhead)
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

TEST_F(TimelineDragTest, TheThumbnailsAreShownWhenTheyCome)
{
    enter(WindowModel::Ready);
    const double scale = window().window().effectiveDevicePixelRatio();
    const QPoint place = (item("thumbnails").mapToScene(QPointF(100, 21)) * scale).toPoint();
    const QColor before = window().screenshot().pixelColor(place);
    window().finishThumbnails();
    EXPECT_NE(window().screenshot().pixelColor(place), before);
}

} // namespace

} // namespace stackreel
