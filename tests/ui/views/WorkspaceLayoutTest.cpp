#include "tests/ui/views/LayoutTest.h"

namespace stackreel
{

namespace
{

using WorkspaceLayoutTest = LayoutTest;

TEST_F(WorkspaceLayoutTest, FitsTheVideoIntoTheCanvas)
{
    enter(WindowModel::Ready);
    const QRectF area = geometry("canvasArea").adjusted(18, 18, -18, -18);
    const double aspect = 1920.0 / 1080;
    ASSERT_LT(area.width() / area.height(), aspect) << "the canvas should be narrower than the video";
    expectGeometry("videoFrame", QRectF(area.x(), area.center().y() - area.width() / aspect / 2, area.width(),
                                        area.width() / aspect));
    EXPECT_EQ(geometry("playerSurface"), geometry("videoFrame"));
    window().window().resize(1180, 710);
    MediaInfo square = WindowWithFakes::clip();
    square.width = 1100;
    window().load(square);
    settle();
    const QRectF wide = geometry("canvasArea").adjusted(18, 18, -18, -18);
    const double width = wide.height() * 1100 / 1080;
    ASSERT_GT(wide.width(), width) << "the canvas should be wider than the video";
    expectGeometry("videoFrame", QRectF(wide.center().x() - width / 2, wide.y(), width, wide.height()));
}

TEST_F(WorkspaceLayoutTest, ThePreviewControlsAreAtTheBottomRight)
{
    enter(WindowModel::Ready);
    const QRectF canvas = geometry("canvasArea");
    expectGeometry("muteButton", QRectF(canvas.right() - 18 - 38, canvas.bottom() - 18 - 38, 38, 38));
    expectGeometry("playButton",
                   QRectF(canvas.right() - 18 - 38 - 8 - 38, canvas.bottom() - 18 - 38, 38, 38));
    QQuickItem& button = item("playButton");
    EXPECT_EQ(button.property("padding").toDouble(), 9);
    EXPECT_EQ(background(button).property("radius").toDouble(), 6);
    EXPECT_TRUE(same(color(background(button)), black(0.64)));
    press(centre(button));
    EXPECT_TRUE(same(color(background(button)), black(0.82)));
    release(QPoint(600, 30));
}

TEST_F(WorkspaceLayoutTest, TheCropsAreDrawnFromTheirRegions)
{
    enter(WindowModel::Ready);
    const QRectF frame = geometry("videoFrame");
    for (const auto& [name, region, color, label] :
         {std::tuple("topCrop", windowModel().topRegion(), signalCoral, "Top"),
          std::tuple("bottomCrop", windowModel().bottomRegion(), shellCoral, "Bottom")}) {
        const QRectF rect(frame.x() + region.x() * frame.width(), frame.y() + region.y() * frame.height(),
                          region.width() * frame.width(), region.height() * frame.height());
        const bool selected = std::string(name) == "topCrop";
        const QRectF body = geometry(child(name, "body"));
        EXPECT_NEAR(body.x(), rect.x(), 0.01);
        EXPECT_NEAR(body.y(), rect.y(), 0.01);
        EXPECT_NEAR(body.width(), rect.width(), 0.01);
        EXPECT_NEAR(body.height(), rect.height(), 0.01);
        QColor fill = color;
        fill.setAlphaF(selected ? 0.16F : 0.09F);
        EXPECT_TRUE(same(ViewsTest::color(child(name, "fill")), fill));
        // The outline is centred on the edge: half of its width lies outside.
        const double half = selected ? 2 : 1;
        const QRectF stroke = geometry(child(name, "stroke"));
        EXPECT_NEAR(stroke.x(), rect.x() - half, 0.01);
        EXPECT_NEAR(stroke.bottom(), rect.bottom() + half, 0.01);
        const QQuickItem& badge = child(name, "badge");
        EXPECT_NEAR(geometry(badge).x(), rect.x() + 6, 0.01);
        EXPECT_NEAR(geometry(badge).y(), rect.y() + 6, 0.01);
        EXPECT_TRUE(same(ViewsTest::color(badge), color));
        const QQuickItem& badgeText = child(name, "badgeText");
        EXPECT_EQ(text(badgeText), QString::fromLatin1(label));
        EXPECT_EQ(font(badgeText).pixelSize(), 15);
        EXPECT_EQ(font(badgeText).weight(), QFont::Bold);
        EXPECT_TRUE(same(ViewsTest::color(badgeText), black()));
        EXPECT_NEAR(geometry(badgeText).x() - geometry(badge).x(), 9, 0.01);
        EXPECT_NEAR(geometry(badgeText).y() - geometry(badge).y(), 5, 0.01);
        EXPECT_NEAR(geometry(badge).right() - geometry(badgeText).right(), 9, 0.01);
        EXPECT_NEAR(geometry(badge).bottom() - geometry(badgeText).bottom(), 5, 0.01);
        EXPECT_EQ(child(name, "resizeHandle").isVisible(), selected);
    }
}

TEST_F(WorkspaceLayoutTest, TheResizeHandleIsInsideTheCornerOfTheCrop)
{
    enter(WindowModel::Ready);
    const QRectF body = geometry(child("topCrop", "body"));
    const QQuickItem& handle = child("topCrop", "resizeHandle");
    EXPECT_EQ(geometry(handle).size(), QSizeF(20, 20));
    EXPECT_NEAR(geometry(handle).right(), body.right(), 0.01);
    EXPECT_NEAR(geometry(handle).bottom(), body.bottom(), 0.01);
    EXPECT_TRUE(same(color(handle), black()));
    const QQuickItem& mark = child("topCrop", "mark");
    EXPECT_EQ(geometry(mark).size(), QSizeF(12, 12));
    EXPECT_EQ(geometry(mark).center(), geometry(handle).center());
}

TEST_F(WorkspaceLayoutTest, TheTimelineIsBelowTheCanvas)
{
    enter(WindowModel::Ready);
    const QRectF workspace = geometry("workspace");
    expectGeometry("timeline",
                   QRectF(workspace.x() + 18, workspace.bottom() - 14 - 84, workspace.width() - 36, 84));
    EXPECT_EQ(geometry("canvasArea").bottom(), geometry("timeline").top());
    expect({"trimTitle", QStringLiteral("Trim"), 15, QFont::Black, white()});
    expect({"rangeText", QStringLiteral("0:00 to 0:20"), 12, QFont::DemiBold, white(0.62)});
    expect({"selectedText", QStringLiteral("0:20 selected"), 12, QFont::DemiBold, white(0.72)});
    EXPECT_EQ(geometry("selectedText").right(), geometry("timeline").right());
}

TEST_F(WorkspaceLayoutTest, TheTimelineItemsAreAtThePositionsOfTheirTimes)
{
    enter(WindowModel::Ready);
    model().updateTrimStart(5);
    model().updateTrimEnd(15);
    model().seekPreview(10);
    settle();
    const QRectF strip = geometry("strip");
    const double track = strip.width() - 36;
    const double s = strip.x() + 18 + track / 4;
    const double e = strip.x() + 18 + track * 3 / 4;
    EXPECT_EQ(strip.height(), 42);
    expectGeometry("thumbnails", QRectF(strip.x() + 18, strip.y(), track, 42));
    expectGeometry("videoPosition", QRectF(strip.x() + 18, strip.y(), track, 42));
    expectGeometry("cutBefore", QRectF(strip.x() + 18, strip.y(), s - strip.x() - 18, 42));
    expectGeometry("cutAfter", QRectF(e, strip.y(), strip.right() - 18 - e, 42));
    expectGeometry("rangeBar", QRectF(s, strip.y() + 38, e - s, 4));
    expectGeometry("playhead", QRectF(strip.center().x() - 1, strip.y() - 2, 2, 46));
    expectGeometry("trimStartHandle", QRectF(s - 6.5, strip.y() - 2, 13, 46));
    expectGeometry("trimEndHandle", QRectF(e - 6.5, strip.y() - 2, 13, 46));
    EXPECT_TRUE(same(color(item("cutBefore")), black(0.7)));
    EXPECT_TRUE(same(color(item("cutAfter")), black(0.7)));
    EXPECT_TRUE(same(color(item("rangeBar")), signalCoral));
    EXPECT_TRUE(same(color(item("playhead")), white()));
    const QQuickItem& grip = child("trimStartHandle", "grip");
    EXPECT_EQ(geometry(grip).size(), QSizeF(2, 17));
    EXPECT_NEAR(geometry(grip).center().x(), geometry("trimStartHandle").center().x(), 0.01);
    EXPECT_NEAR(geometry(grip).center().y(), geometry("trimStartHandle").center().y(), 0.01);
    EXPECT_TRUE(same(color(grip), black(0.58)));
    EXPECT_EQ(child("trimStartHandle", "face").property("radius").toDouble(), 3);
    EXPECT_EQ(geometry(child("trimStartHandle", "face")), geometry("trimStartHandle"));
}

} // namespace

} // namespace stackreel
