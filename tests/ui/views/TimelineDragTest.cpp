#include "tests/ui/views/ViewsTest.h"

#include <cmath>

namespace stackreel
{

namespace
{

class TimelineDragTest : public ViewsTest
{
protected:
    void SetUp() override { enter(WindowModel::Ready); }

    /// The position in the window of a time on the timeline.
    QPoint at(double seconds)
    {
        const QQuickItem& strip = item("strip");
        const double x = 18 + (strip.width() - 36) * seconds / windowModel().duration();
        return strip.mapToScene(QPointF(std::round(x), 21)).toPoint();
    }

    /// How many seconds one point of the timeline's width stands for.
    double pointSeconds() { return windowModel().duration() / (item("strip").width() - 36); }

    double shadow(const char* handle) { return child(handle, "shadow").property("strength").toDouble(); }
    bool isActive(const char* handle) { return item(handle).property("active").toBool(); }
    double growth(const char* handle) { return item(handle).property("growth").toDouble(); }
};

TEST_F(TimelineDragTest, AClickOnTheStripSeeks)
{
    press(at(8));
    EXPECT_NEAR(model().currentTime(), 8, pointSeconds());
    EXPECT_FALSE(model().previewPlaying());
    release(at(8));
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(TimelineDragTest, ThePlayheadFollowsThePointer)
{
    press(at(8));
    moveTo(at(13));
    EXPECT_NEAR(model().currentTime(), 13, pointSeconds());
    moveTo(at(4) + QPoint(0, -300));
    EXPECT_NEAR(model().currentTime(), 4, pointSeconds()) << "the vertical position does not matter";
    release(at(4));
    EXPECT_EQ(model().trimStart(), 0);
    EXPECT_EQ(model().trimEnd(), 20);
}

TEST_F(TimelineDragTest, ThePlayheadStopsAtTheEndsOfTheRange)
{
    press(at(8));
    moveTo(QPoint(1179, -300));
    EXPECT_EQ(model().currentTime(), 20);
    moveTo(QPoint(-9000, 779));
    EXPECT_EQ(model().currentTime(), 0);
    release(QPoint(-9000, 779));
    EXPECT_TRUE(model().previewPlaying());
}

TEST_F(TimelineDragTest, HandlesAreDraggedWithoutAJump)
{
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

TEST_F(TimelineDragTest, AHandleStopsAtTheMinimumDistanceFromTheOther)
{
    press(at(0));
    moveTo(QPoint(1179, 0));
    EXPECT_EQ(model().trimStart(), 19.75);
    moveTo(at(6));
    release(at(6));
    press(at(20));
    moveTo(QPoint(-9000, 0));
    release(QPoint(-9000, 0));
    EXPECT_NEAR(model().trimStart(), 6, pointSeconds());
    EXPECT_DOUBLE_EQ(model().trimEnd(), model().trimStart() + 0.25);
}

TEST_F(TimelineDragTest, HandlesAreGrabbedAboveAndBelowTheThumbnails)
{
    for (const int away : {-22, 22}) {
        press(at(0) + QPoint(0, away));
        EXPECT_TRUE(isActive("trimStartHandle")) << away;
        release(at(0) + QPoint(0, away));
        moveTo(at(10));
        EXPECT_FALSE(isActive("trimStartHandle")) << away;
    }
}

TEST_F(TimelineDragTest, OnlyTheHandlesReachBeyondTheThumbnails)
{
    const double time = model().currentTime();
    for (const int away : {-23, 22}) {
        moveTo(at(0) + QPoint(0, away));
        EXPECT_TRUE(isActive("trimStartHandle")) << away;
        press(at(10) + QPoint(0, away));
        EXPECT_EQ(model().currentTime(), time) << away;
        EXPECT_TRUE(model().previewPlaying()) << away;
        release(at(10) + QPoint(0, away));
        EXPECT_EQ(model().currentTime(), time) << away;
    }
}

TEST_F(TimelineDragTest, ADragKeepsItsCursorWhereverThePointerGoes)
{
    press(at(20));
    for (const char* over : {"topCrop", "exportButton", "titleBar"}) {
        moveTo(centre(item(over)));
        EXPECT_EQ(cursor(), Qt::ClosedHandCursor) << over;
    }
    moveTo(QPoint(-50, 300));
    EXPECT_EQ(cursor(), Qt::ClosedHandCursor) << "outside the window";
    moveTo(at(20));
    release(at(20));
    EXPECT_EQ(cursor(), Qt::OpenHandCursor);
    press(at(10));
    moveTo(centre(child("topCrop", "body")));
    EXPECT_EQ(cursor(), Qt::ArrowCursor) << "the playhead is dragged";
    release(centre(child("topCrop", "body")));
    EXPECT_EQ(cursor(), Qt::SizeAllCursor);
}

TEST_F(TimelineDragTest, AHoveredHandleGrowsAndShowsTheOpenHandCursor)
{
    moveTo(at(10));
    EXPECT_EQ(cursor(), Qt::ArrowCursor);
    moveTo(at(20) - QPoint(15, 0));
    EXPECT_TRUE(isActive("trimEndHandle"));
    EXPECT_EQ(cursor(), Qt::OpenHandCursor);
    EXPECT_TRUE(becomesTrue([this] { return growth("trimEndHandle") == 1.1; }));
    settle();
    EXPECT_NEAR(geometry(child("trimEndHandle", "face")).width(), 13 * 1.1, 0.01);
    EXPECT_NEAR(geometry(child("trimEndHandle", "face")).height(), 46 * 1.1, 0.01);
    EXPECT_NEAR(geometry(child("trimEndHandle", "face")).center().x(), geometry("trimEndHandle").center().x(),
                0.01);
    press(at(20) - QPoint(15, 0));
    EXPECT_EQ(cursor(), Qt::ClosedHandCursor);
    release(at(20) - QPoint(15, 0));
    EXPECT_EQ(cursor(), Qt::OpenHandCursor);
    moveTo(at(10) - QPoint(0, 200));
    EXPECT_FALSE(isActive("trimEndHandle"));
    EXPECT_TRUE(becomesTrue([this] { return growth("trimEndHandle") == 1; }));
}

TEST_F(TimelineDragTest, TheShadowOfAHandleIsSevenPointsWideAndDarkerWhileHovered)
{
    const QQuickItem& below = child("trimStartHandle", "shadow");
    double farthest = 0;
    for (const QQuickItem* layer : below.childItems())
        farthest = std::max(farthest, -layer->x());
    EXPECT_EQ(farthest, 7);
    const double idle = shadow("trimStartHandle");
    EXPECT_GT(idle, 0);
    EXPECT_LT(idle, 0.32);
    moveTo(at(10));
    moveTo(at(0));
    EXPECT_TRUE(becomesTrue([this] { return growth("trimStartHandle") == 1.1; }));
    EXPECT_NEAR(shadow("trimStartHandle"), 0.32, 1e-9);
    double light = 1;
    std::vector<double> darkness;
    for (const QQuickItem* layer : below.childItems())
        if (layer->inherits("QQuickRectangle"))
            darkness.push_back(1 - (light *= 1 - layer->opacity()));
    ASSERT_EQ(darkness.size(), 7U);
    EXPECT_NEAR(darkness.back(), 0.32, 1e-9) << "all layers together";
    EXPECT_NEAR(shadow("trimEndHandle"), idle, 1e-9);
}

TEST_F(TimelineDragTest, HoveringHasNoEffectDuringADrag)
{
    press(at(10));
    moveTo(at(20));
    EXPECT_FALSE(isActive("trimEndHandle"));
    release(at(20));
}

TEST_F(TimelineDragTest, AHandleReleasedOutsideTheTimelineIsNoLongerActive)
{
    moveTo(at(10));
    moveTo(at(20));
    press(at(20));
    moveTo(at(15) - QPoint(0, 40));
    EXPECT_TRUE(isActive("trimEndHandle"));
    EXPECT_EQ(cursor(), Qt::ClosedHandCursor);
    release(at(15) - QPoint(0, 40));
    EXPECT_FALSE(isActive("trimEndHandle"));
    EXPECT_EQ(cursor(), Qt::ArrowCursor);
    EXPECT_NEAR(model().trimEnd(), 15, pointSeconds());
}

TEST_F(TimelineDragTest, HidingTheTimelineEndsHovering)
{
    moveTo(at(10));
    moveTo(at(20));
    ASSERT_TRUE(isActive("trimEndHandle"));
    window().startExport();
    settle();
    ASSERT_FALSE(item("timeline").isVisible());
    EXPECT_FALSE(isActive("trimEndHandle"));
    EXPECT_EQ(cursor(), Qt::ArrowCursor);
}

TEST_F(TimelineDragTest, HidingTheTimelineEndsADrag)
{
    press(at(20));
    moveTo(at(15));
    model().chooseSource();
    fakes().openPanel->choose("/clips/another.mov");
    settle();
    ASSERT_FALSE(item("timeline").isVisible());
    release(at(15));
    fakes().inspections.back().task().complete(WindowWithFakes::clip());
    fakes().previews.back().task().complete("/clips/another.mov");
    settle();
    EXPECT_FALSE(isActive("trimEndHandle"));
    EXPECT_EQ(model().trimEnd(), 20);
}

TEST_F(TimelineDragTest, ArrowKeysStepTheHandlesAndThePlayhead)
{
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

TEST_F(TimelineDragTest, AClickOnATimelineItemGivesItTheFocus)
{
    for (const auto& [seconds, name] : {std::pair(0.0, "trimStartHandle"), std::pair(10.0, "videoPosition"),
                                        std::pair(20.0, "trimEndHandle")}) {
        press(at(seconds));
        release(at(seconds));
        EXPECT_TRUE(item(name).hasActiveFocus()) << name;
        EXPECT_FALSE(child(name, "focusRing").isVisible()) << name;
    }
    key(Qt::Key_Left);
    EXPECT_DOUBLE_EQ(model().trimEnd(), 19.75);
}

} // namespace

} // namespace stackreel
