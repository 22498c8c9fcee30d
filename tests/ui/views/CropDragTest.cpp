#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

namespace
{

class CropDragTest : public ViewsTest
{
protected:
    void SetUp() override { enter(WindowModel::Ready); }

    /// Drags the pointer from a point by a distance, in several steps.
    void drag(QPoint from, QPoint distance)
    {
        press(from);
        moveTo(from + distance / 3);
        moveTo(from + distance);
        release(from + distance);
    }

    QQuickItem& body(const char* crop) { return child(crop, "body"); }
    QPoint corner() { return centre(child("topCrop", "resizeHandle")); }
    QRectF top() { return windowModel().topRegion(); }
    QRectF bottom() { return windowModel().bottomRegion(); }
};

TEST_F(CropDragTest, ACropIsSelectedByAClick)
{
    const QPoint place = centre(body("bottomCrop"));
    press(place);
    release(place);
    EXPECT_EQ(model().selectedCrop(), 1);
}

TEST_F(CropDragTest, AClickDoesNotMoveACrop)
{
    const QRectF before = top();
    const QPoint place = centre(body("topCrop"));
    press(place);
    moveTo(place);
    release(place);
    EXPECT_EQ(top(), before);
}

TEST_F(CropDragTest, ACropFollowsThePointerAndIsSelectedByTheDrag)
{
    const QRectF frame = geometry("videoFrame");
    const QRectF before = bottom();
    const QPoint from = centre(body("bottomCrop"));
    press(from);
    EXPECT_EQ(model().selectedCrop(), 0) << "not before it moves";
    moveTo(from + QPoint(-60, 20));
    EXPECT_EQ(model().selectedCrop(), 1);
    moveTo(from + QPoint(-30, 10));
    EXPECT_NEAR(bottom().x(), before.x() - 30 / frame.width(), 1e-9);
    EXPECT_NEAR(bottom().y(), before.y() + 10 / frame.height(), 1e-9);
    release(from + QPoint(-30, 10));
    EXPECT_EQ(bottom().size(), before.size());
}

TEST_F(CropDragTest, DraggingACropBackRestoresItsRegion)
{
    const QRectF before = top();
    const QPoint from = centre(body("topCrop"));
    press(from);
    moveTo(from + QPoint(500, 300));
    moveTo(from);
    release(from);
    EXPECT_EQ(top(), before);
}

TEST_F(CropDragTest, ACropIsClampedToTheEdgeOfThePicture)
{
    const QRectF before = top();
    drag(centre(body("topCrop")), QPoint(600, 0));
    EXPECT_EQ(top().x(), 1 - before.width());
    EXPECT_EQ(top().size(), before.size());
}

TEST_F(CropDragTest, ADragContinuesAndEndsOutsideTheWindow)
{
    const QRectF before = top();
    const QPoint from = centre(body("topCrop"));
    press(from);
    moveTo(QPoint(-900, -700));
    EXPECT_EQ(top(), QRectF(QPointF(0, 0), before.size()));
    release(QPoint(-900, -700));
    moveTo(from);
    EXPECT_EQ(top(), QRectF(QPointF(0, 0), before.size())) << "the drag has ended";
}

TEST_F(CropDragTest, AResizeIsLimitedByTheEdgeOfThePicture)
{
    const QRectF before = top();
    const QRectF frame = geometry("videoFrame");
    press(corner());
    moveTo(QPoint(1179, 779));
    release(QPoint(1179, 779));
    EXPECT_EQ(top().topLeft(), before.topLeft());
    EXPECT_NEAR(top().bottom(), 1, 1e-9) << "the bottom edge is the nearer one";
    EXPECT_NEAR(top().width() * frame.width() / (top().height() * frame.height()), 1.125, 1e-9);
}

TEST_F(CropDragTest, ADragEndsWhenTheCanvasIsHidden)
{
    model().setTopRegion({.x = 0.3, .y = 0.2, .width = 0.3, .height = 0.4});
    settle();
    press(centre(body("topCrop")));
    moveTo(centre(body("topCrop")) + QPoint(30, 0));
    model().chooseSource();
    fakes().openPanel->choose("/clips/another.mov");
    settle();
    ASSERT_FALSE(item("videoCanvas").isVisible());
    release(QPoint(10, 300));
    fakes().inspections.back().task().complete(WindowWithFakes::clip());
    fakes().previews.back().task().complete("/clips/another.mov");
    settle();
    const QRectF before = top();
    drag(centre(body("topCrop")), QPoint(30, 0));
    EXPECT_NEAR(top().x(), before.x() + 30 / geometry("videoFrame").width(), 1e-9);
    EXPECT_EQ(top().size(), before.size());
}

TEST_F(CropDragTest, DraggingTheHandleResizesAndKeepsTheUpperLeftCorner)
{
    const QRectF frame = geometry("videoFrame");
    const QRectF before = top();
    drag(corner(), QPoint(-90, 20));
    EXPECT_EQ(top().topLeft(), before.topLeft());
    EXPECT_NEAR(top().width(), before.width() - 90 / frame.width(), 1e-9);
    EXPECT_NEAR(top().width() * frame.width() / (top().height() * frame.height()), 1.125, 1e-9);
}

TEST_F(CropDragTest, ResizesByTheHeightInAMostlyVerticalDragAndByTheWidthOtherwise)
{
    const QRectF frame = geometry("videoFrame");
    const QRectF before = top();
    drag(corner(), QPoint(-20, -60));
    EXPECT_NEAR(top().height(), before.height() - 60 / frame.height(), 1e-9);
    windowModel().setTopRegion(before);
    settle();
    drag(corner(), QPoint(-60, 60));
    EXPECT_NEAR(top().width(), before.width() - 60 / frame.width(), 1e-9);
}

TEST_F(CropDragTest, ASecondResizeStartsFromTheResultOfTheFirst)
{
    const QRectF frame = geometry("videoFrame");
    const QRectF before = top();
    drag(corner(), QPoint(-30, 0));
    drag(corner(), QPoint(-30, 0));
    EXPECT_NEAR(top().width(), before.width() - 60 / frame.width(), 1e-9);
}

TEST_F(CropDragTest, TheArrowKeysMoveAndResizeAFocusedCrop)
{
    const QRectF before = bottom();
    body("bottomCrop").forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(child("bottomCrop", "focusRing").isVisible());
    EXPECT_FALSE(child("topCrop", "focusRing").isVisible());
    key(Qt::Key_Left);
    EXPECT_NEAR(bottom().x(), before.x() - 1.0 / 1920, 1e-9);
    EXPECT_EQ(model().selectedCrop(), 1);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_NEAR(bottom().y(), before.y() - 10.0 / 1080, 1e-9);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_NEAR(bottom().width(), before.width() - 1.0 / 1920, 1e-9);
}

TEST_F(CropDragTest, TheOutlineHasTheCropsColourAndIsWiderWhenSelected)
{
    for (const int selected : {0, 1}) {
        model().setSelectedCrop(selected);
        settle();
        for (const auto& [name, index] : {std::pair("topCrop", 0), std::pair("bottomCrop", 1)}) {
            const QObject* line = child(name, "stroke").property("border").value<QObject*>();
            ASSERT_NE(line, nullptr);
            EXPECT_EQ(line->property("width").toDouble(), index == selected ? 4 : 2) << name;
            EXPECT_EQ(line->property("color").value<QColor>(), color(child(name, "badge"))) << name;
            EXPECT_EQ(child(name, "stroke").property("radius").toDouble(), 0) << name;
        }
    }
}

TEST_F(CropDragTest, TheCursorShowsWhetherADragMovesOrResizes)
{
    moveTo(centre(body("topCrop")));
    EXPECT_EQ(cursor(), Qt::SizeAllCursor);
    moveTo(corner());
    EXPECT_EQ(cursor(), Qt::SizeFDiagCursor);
}

TEST_F(CropDragTest, ADragKeepsItsCursorWhereverThePointerGoes)
{
    const QPoint elsewhere = centre(item("exportButton"));
    press(corner());
    moveTo(elsewhere);
    EXPECT_EQ(cursor(), Qt::SizeFDiagCursor);
    release(elsewhere);
    EXPECT_NE(cursor(), Qt::SizeFDiagCursor);
    press(centre(body("bottomCrop")));
    moveTo(elsewhere);
    EXPECT_EQ(cursor(), Qt::SizeAllCursor);
    release(elsewhere);
    EXPECT_NE(cursor(), Qt::SizeAllCursor);
}

TEST_F(CropDragTest, WhereCropsOverlapTheBottomCropIsInFront)
{
    for (int selected : {0, 1}) {
        model().setTopRegion({.x = 0.2, .y = 0.2, .width = 0.4, .height = 0.4});
        model().setBottomRegion({.x = 0.3, .y = 0.3, .width = 0.4, .height = 0.4});
        model().setSelectedCrop(selected);
        settle();
        const QRectF before = top();
        const QRectF frame = geometry("videoFrame");
        const QPoint both =
            item("videoFrame").mapToScene({0.5 * frame.width(), 0.5 * frame.height()}).toPoint();
        drag(both, QPoint(30, 0));
        EXPECT_EQ(top(), before) << selected;
        EXPECT_NEAR(bottom().x(), 0.3 + 30 / frame.width(), 1e-9) << selected;
        EXPECT_EQ(model().selectedCrop(), 1);
    }
}

} // namespace

} // namespace stackreel
