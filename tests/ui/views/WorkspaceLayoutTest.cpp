#include "tests/ui/views/LayoutTest.h"

namespace stackreel
{

namespace
{

using WorkspaceLayoutTest = LayoutTest;

TEST_F(WorkspaceLayoutTest, TheVideoIsFittedIntoTheCanvas)
{
    enter(WindowModel::Ready);
    const QRectF area = place("canvasArea").adjusted(18, 18, -18, -18);
    const double aspect = 1920.0 / 1080;
    ASSERT_LT(area.width() / area.height(), aspect) << "the canvas is to be the narrower one";
    expectPlace("videoFrame", QRectF(area.x(), area.center().y() - area.width() / aspect / 2, area.width(),
                                     area.width() / aspect));
    EXPECT_EQ(place("playerSurface"), place("videoFrame"));
    window().window().resize(1180, 710);
    MediaInfo square = OfflineWindow::clip();
    square.width = 1100;
    window().load(square);
    settle();
    const QRectF wide = place("canvasArea").adjusted(18, 18, -18, -18);
    const double width = wide.height() * 1100 / 1080;
    ASSERT_GT(wide.width(), width) << "the canvas is to be the wider one";
    expectPlace("videoFrame", QRectF(wide.center().x() - width / 2, wide.y(), width, wide.height()));
}

TEST_F(WorkspaceLayoutTest, ThePreviewsControlsAreAtTheBottomRight)
{
    enter(WindowModel::Ready);
    const QRectF canvas = place("canvasArea");
    expectPlace("muteButton", QRectF(canvas.right() - 18 - 38, canvas.bottom() - 18 - 38, 38, 38));
    expectPlace("playButton", QRectF(canvas.right() - 18 - 38 - 8 - 38, canvas.bottom() - 18 - 38, 38, 38));
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
    const QRectF frame = place("videoFrame");
    for (const auto& [name, region, color, label] :
         {std::tuple("topCrop", windowModel().topRegion(), signalCoral, "Top"),
          std::tuple("bottomCrop", windowModel().bottomRegion(), shellCoral, "Bottom")}) {
        const QRectF rect(frame.x() + region.x() * frame.width(), frame.y() + region.y() * frame.height(),
                          region.width() * frame.width(), region.height() * frame.height());
        const bool selected = std::string(name) == "topCrop";
        const QRectF body = place(part(name, "body"));
        EXPECT_NEAR(body.x(), rect.x(), 0.01);
        EXPECT_NEAR(body.y(), rect.y(), 0.01);
        EXPECT_NEAR(body.width(), rect.width(), 0.01);
        EXPECT_NEAR(body.height(), rect.height(), 0.01);
        QColor fill = color;
        fill.setAlphaF(selected ? 0.16F : 0.09F);
        EXPECT_TRUE(same(ViewsTest::color(part(name, "fill")), fill));
        // The outline is centred on the edge: half of its width lies outside.
        const double half = selected ? 2 : 1;
        const QRectF stroke = place(part(name, "stroke"));
        EXPECT_NEAR(stroke.x(), rect.x() - half, 0.01);
        EXPECT_NEAR(stroke.bottom(), rect.bottom() + half, 0.01);
        const QQuickItem& badge = part(name, "badge");
        EXPECT_NEAR(place(badge).x(), rect.x() + 6, 0.01);
        EXPECT_NEAR(place(badge).y(), rect.y() + 6, 0.01);
        EXPECT_TRUE(same(ViewsTest::color(badge), color));
        const QQuickItem& badgeText = part(name, "badgeText");
        EXPECT_EQ(text(badgeText), QString::fromLatin1(label));
        EXPECT_EQ(font(badgeText).pixelSize(), 15);
        EXPECT_EQ(font(badgeText).weight(), QFont::Bold);
        EXPECT_TRUE(same(ViewsTest::color(badgeText), black()));
        EXPECT_NEAR(place(badgeText).x() - place(badge).x(), 9, 0.01);
        EXPECT_NEAR(place(badgeText).y() - place(badge).y(), 5, 0.01);
        EXPECT_NEAR(place(badge).right() - place(badgeText).right(), 9, 0.01);
        EXPECT_NEAR(place(badge).bottom() - place(badgeText).bottom(), 5, 0.01);
        EXPECT_EQ(part(name, "resizeHandle").isVisible(), selected);
    }
}

TEST_F(WorkspaceLayoutTest, TheResizeHandleLiesInsideTheCorner)
{
    enter(WindowModel::Ready);
    const QRectF body = place(part("topCrop", "body"));
    const QQuickItem& handle = part("topCrop", "resizeHandle");
    EXPECT_EQ(place(handle).size(), QSizeF(20, 20));
    EXPECT_NEAR(place(handle).right(), body.right(), 0.01);
    EXPECT_NEAR(place(handle).bottom(), body.bottom(), 0.01);
    EXPECT_TRUE(same(color(handle), black()));
    const QQuickItem& mark = part("topCrop", "mark");
    EXPECT_EQ(place(mark).size(), QSizeF(12, 12));
    EXPECT_EQ(place(mark).center(), place(handle).center());
}

TEST_F(WorkspaceLayoutTest, TheTimelineLiesBelowTheCanvas)
{
    enter(WindowModel::Ready);
    const QRectF workspace = place("workspace");
    expectPlace("timeline",
                QRectF(workspace.x() + 18, workspace.bottom() - 14 - 84, workspace.width() - 36, 84));
    EXPECT_EQ(place("canvasArea").bottom(), place("timeline").top());
    expect({"trimTitle", QStringLiteral("Trim"), 15, QFont::Black, white()});
    expect({"rangeText", QStringLiteral("0:00 to 0:20"), 12, QFont::DemiBold, white(0.62)});
    expect({"selectedText", QStringLiteral("0:20 selected"), 12, QFont::DemiBold, white(0.72)});
    EXPECT_EQ(place("selectedText").right(), place("timeline").right());
}

TEST_F(WorkspaceLayoutTest, TheStripsPartsLieAtTheirTimes)
{
    enter(WindowModel::Ready);
    model().updateTrimStart(5);
    model().updateTrimEnd(15);
    model().seekPreview(10);
    settle();
    const QRectF strip = place("strip");
    const double track = strip.width() - 36;
    const double s = strip.x() + 18 + track / 4;
    const double e = strip.x() + 18 + track * 3 / 4;
    EXPECT_EQ(strip.height(), 42);
    expectPlace("thumbnails", QRectF(strip.x() + 18, strip.y(), track, 42));
    expectPlace("videoPosition", QRectF(strip.x() + 18, strip.y(), track, 42));
    expectPlace("cutBefore", QRectF(strip.x() + 18, strip.y(), s - strip.x() - 18, 42));
    expectPlace("cutAfter", QRectF(e, strip.y(), strip.right() - 18 - e, 42));
    expectPlace("rangeBar", QRectF(s, strip.y() + 38, e - s, 4));
    expectPlace("playhead", QRectF(strip.center().x() - 1, strip.y() - 2, 2, 46));
    expectPlace("trimStartHandle", QRectF(s - 6.5, strip.y() - 2, 13, 46));
    expectPlace("trimEndHandle", QRectF(e - 6.5, strip.y() - 2, 13, 46));
    EXPECT_TRUE(same(color(item("cutBefore")), black(0.7)));
    EXPECT_TRUE(same(color(item("cutAfter")), black(0.7)));
    EXPECT_TRUE(same(color(item("rangeBar")), signalCoral));
    EXPECT_TRUE(same(color(item("playhead")), white()));
    const QQuickItem& grip = part("trimStartHandle", "grip");
    EXPECT_EQ(place(grip).size(), QSizeF(2, 17));
    EXPECT_NEAR(place(grip).center().x(), place("trimStartHandle").center().x(), 0.01);
    EXPECT_NEAR(place(grip).center().y(), place("trimStartHandle").center().y(), 0.01);
    EXPECT_TRUE(same(color(grip), black(0.58)));
    EXPECT_EQ(part("trimStartHandle", "face").property("radius").toDouble(), 3);
    EXPECT_EQ(place(part("trimStartHandle", "face")), place("trimStartHandle"));
}

} // namespace

} // namespace stackreel
