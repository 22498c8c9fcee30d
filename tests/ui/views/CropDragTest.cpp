#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

namespace
{

class CropDragTest : public ViewsTest
{
protected:
    /// Drags from a point by a distance, in several steps.
    void drag(QPoint from, QPoint distance)
    {
        press(from);
        moveTo(from + distance / 3);
        moveTo(from + distance);
        release(from + distance);
    }
};

TEST_F(CropDragTest, ACropIsSelectedByAClick)
{
    enter(WindowModel::Ready);
    const QPoint bottom = centre(part("bottomCrop", "body"));
    press(bottom);
    release(bottom);
    EXPECT_EQ(model().selectedCrop(), 1);
}

TEST_F(CropDragTest, ACropFollowsThePointerAndIsSelectedByTheDrag)
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

TEST_F(CropDragTest, ACropDraggedBackToItsStartIsWhereItWas)
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

TEST_F(CropDragTest, ACropDraggedFarIsPinnedToTheEdge)
{
    enter(WindowModel::Ready);
    const QRectF before = windowModel().topRegion();
    drag(centre(part("topCrop", "body")), QPoint(600, 0));
    EXPECT_EQ(windowModel().topRegion().x(), 1 - before.width());
    EXPECT_EQ(windowModel().topRegion().size(), before.size());
}

TEST_F(CropDragTest, TheHandleResizesAboutTheOtherCornerAndWinsOverTheBody)
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

TEST_F(CropDragTest, AMostlyVerticalResizeFollowsTheHeightAndATieTheWidth)
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

TEST_F(CropDragTest, ACropIsMovedAndResizedByKeys)
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

} // namespace

} // namespace stackreel
