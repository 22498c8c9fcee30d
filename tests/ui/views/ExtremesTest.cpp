#include "tests/ui/views/LayoutTest.h"

namespace stackreel
{

namespace
{

/// The smallest window with clips and crops at their extremes.
class ExtremesTest : public LayoutTest
{
protected:
    ExtremesTest()
    {
        window().window().resize(window().window().minimumSize());
        settle();
    }

    void load(QSize size, double duration = 20)
    {
        MediaInfo media = WindowWithFakes::clip(duration);
        media.width = size.width();
        media.height = size.height();
        window().load(media);
        settle();
    }
    /// Selects a crop and sets its region. The other crop is put elsewhere, because the bottom crop may cover
    /// the top one.
    void setRegion(int crop, const QRectF& region)
    {
        const QRectF elsewhere(0, 1 - smallest, smallest, smallest);
        windowModel().setTopRegion(crop == 0 ? region : elsewhere);
        windowModel().setBottomRegion(crop == 1 ? region : elsewhere);
        model().setSelectedCrop(crop);
        settle();
    }
    QRectF region(int crop) { return crop == 0 ? windowModel().topRegion() : windowModel().bottomRegion(); }
    void drag(QPointF from, QPoint distance)
    {
        press(from.toPoint());
        moveTo(from.toPoint() + distance / 2);
        moveTo(from.toPoint() + distance);
        release(from.toPoint() + distance);
    }
    /// The colours on a line between two points in the window, in points.
    std::vector<QColor> colours(QPointF from, QPointF to)
    {
        std::vector<QColor> found;
        const QImage picture = window().screenshot();
        const double scale = window().window().effectiveDevicePixelRatio();
        const QLineF line(from * scale, to * scale);
        for (double at = 0; at <= 1; at += 1 / line.length())
            found.push_back(picture.pixelColor(line.pointAt(at).toPoint()));
        return found;
    }

    static constexpr double smallest = 0.06;
};

TEST_F(ExtremesTest, AClipOfAnyShapeFitsTheCanvas)
{
    for (const QSize size : {QSize(1920, 480), QSize(480, 1920), QSize(1081, 1080)}) {
        load(size);
        const QRectF area = geometry("canvasArea").adjusted(18, 18, -18, -18);
        const QRectF frame = geometry("videoFrame");
        EXPECT_TRUE(area.adjusted(-0.01, -0.01, 0.01, 0.01).contains(frame)) << size.width();
        EXPECT_NEAR(frame.width() / frame.height(), double(size.width()) / size.height(), 1e-6);
        EXPECT_NEAR(frame.center().x(), area.center().x(), 0.01);
        for (const char* crop : {"topCrop", "bottomCrop"})
            EXPECT_TRUE(frame.adjusted(-0.01, -0.01, 0.01, 0.01).contains(geometry(child(crop, "body"))));
    }
}

TEST_F(ExtremesTest, ACropOfTheSmallestSizeIsMovedByPointer)
{
    for (const QSize size : {QSize(1920, 1080), QSize(1920, 480), QSize(1081, 1080)}) {
        load(size);
        for (const int crop : {0, 1}) {
            setRegion(crop, QRectF(0.47, 0.47, smallest, smallest));
            const QQuickItem& body = child(crop == 0 ? "topCrop" : "bottomCrop", "body");
            drag(body.mapToScene(QPointF(2, 2)), QPoint(-30, 0));
            EXPECT_NEAR(region(crop).x(), 0.47 - 30 / geometry("videoFrame").width(), 1e-9) << size.width();
            EXPECT_NEAR(region(crop).width(), smallest, 1e-9);
        }
    }
}

TEST_F(ExtremesTest, ACropOfTheSmallestSizeIsResizedByItsHandle)
{
    for (const QSize size : {QSize(1920, 1080), QSize(1920, 480), QSize(1081, 1080)}) {
        load(size);
        for (const int crop : {0, 1})
            for (const double place : {0.0, 0.47}) {
                setRegion(crop, QRectF(place, place, smallest, smallest));
                QQuickItem& handle = child(crop == 0 ? "topCrop" : "bottomCrop", "resizeHandle");
                EXPECT_TRUE(geometry("canvasArea").contains(geometry(handle))) << size.width();
                drag(handle.mapToScene(QPointF(10, 10)), QPoint(90, 0));
                const double points = region(crop).width() * geometry("videoFrame").width();
                EXPECT_GE(points, 80 - 1e-6) << size.width() << " at " << place;
            }
    }
}

TEST_F(ExtremesTest, ASmallCropInACornerIsDrawnOnlyInTheWorkspace)
{
    load(QSize(1920, 1080));
    setRegion(1, QRectF(1 - smallest, 1 - smallest, smallest, smallest));
    const QQuickItem& badge = child("bottomCrop", "badge");
    ASSERT_GT(geometry(badge).right(), geometry("workspace").right() + 2)
        << "the test needs a label that extends";
    const QPointF beside = badge.mapToScene(QPointF(0, badge.height() / 2));
    const QRectF workspace = geometry("workspace").translated(item("contentView").mapToScene(QPointF(0, 0)));
    for (const QColor& colour :
         colours(QPointF(workspace.right() + 1, beside.y()), QPointF(workspace.right() + 17, beside.y())))
        EXPECT_TRUE(same(colour, graphite));
}

TEST_F(ExtremesTest, TheHandlesOfTheShortestClipStayApart)
{
    load(QSize(1920, 1080), 0.25);
    const QRectF track = geometry("videoPosition");
    EXPECT_EQ(geometry("trimStartHandle").center().x(), track.left());
    EXPECT_EQ(geometry("trimEndHandle").center().x(), track.right());
    drag(item("trimStartHandle").mapToScene(QPointF(6, 23)), QPoint(700, 0));
    EXPECT_NEAR(geometry("trimStartHandle").center().x(), track.center().x(), 0.01);
    drag(item("trimStartHandle").mapToScene(QPointF(6, 23)), QPoint(-300, 0));
    drag(item("trimEndHandle").mapToScene(QPointF(6, 23)), QPoint(-560, 0));
    EXPECT_EQ(geometry("trimStartHandle").center().x(), track.left());
    EXPECT_NEAR(geometry("trimEndHandle").center().x(), track.center().x(), 0.01);
}

TEST_F(ExtremesTest, AClipOfUnknownLengthHasItsHandlesAtTheStartAndCanBeExported)
{
    load(QSize(1920, 1080), 0);
    const QRectF track = geometry("videoPosition");
    drag(item("trimStartHandle").mapToScene(QPointF(6, 23)), QPoint(100, 0));
    drag(track.center() + item("contentView").mapToScene(QPointF(0, 0)), QPoint(50, 0));
    for (const char* name : {"trimStartHandle", "trimEndHandle", "playhead"})
        EXPECT_EQ(geometry(name).center().x(), track.left()) << name;
    EXPECT_EQ(windowModel().lengthFact(), QStringLiteral("Unknown"));
    EXPECT_TRUE(item("exportButton").isEnabled());
}

TEST_F(ExtremesTest, TheTimesOfTheLongestAndShortestClipsDoNotOverlap)
{
    for (const double duration : {0.0, 0.25, 359'999.0}) {
        load(QSize(1920, 1080), duration);
        EXPECT_LE(geometry("trimTitle").right(), geometry("rangeText").left()) << duration;
        EXPECT_LT(geometry("rangeText").right(), geometry("selectedText").left()) << duration;
        EXPECT_LE(geometry("selectedText").right(), geometry("timeline").right()) << duration;
    }
}

} // namespace

} // namespace stackreel
