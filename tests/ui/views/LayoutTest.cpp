#include "tests/ui/views/ViewsTest.h"

#include <QFontInfo>

#include <array>
#include <cmath>

namespace stackreel
{

namespace
{

QColor srgb(double red, double green, double blue, double opacity = 1)
{
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(opacity));
}

QColor white(double opacity = 1)
{
    return srgb(1, 1, 1, opacity);
}

QColor black(double opacity = 1)
{
    return srgb(0, 0, 0, opacity);
}

const QColor graphite = srgb(0.055, 0.065, 0.08);
const QColor panel = srgb(0.095, 0.11, 0.135);
const QColor stage = srgb(0.025, 0.03, 0.04);
const QColor signalCoral = srgb(1.0, 0.353, 0.239);
const QColor shellCoral = srgb(1.0, 0.72, 0.65);

/// Equal as far as a colour of 8 bits a channel tells.
testing::AssertionResult same(const QColor& one, const QColor& other)
{
    const std::array<float, 4> differences = {one.redF() - other.redF(), one.greenF() - other.greenF(),
                                              one.blueF() - other.blueF(), one.alphaF() - other.alphaF()};
    for (const float difference : differences)
        if (std::abs(difference) > 1 / 255.0F)
            return testing::AssertionFailure() << one.name(QColor::HexArgb).toStdString() << " is not "
                                               << other.name(QColor::HexArgb).toStdString();
    return testing::AssertionSuccess();
}

class LayoutTest : public ViewsTest
{
protected:
    /// A text as it is on the screen.
    struct Type {
        const char* name;
        QString text;
        int pixels;
        int weight;
        QColor color;
    };

    void expect(const Type& type)
    {
        const QQuickItem& target = item(type.name);
        EXPECT_EQ(text(target), type.text) << type.name;
        EXPECT_EQ(font(target).pixelSize(), type.pixels) << type.name;
        EXPECT_EQ(font(target).weight(), type.weight) << type.name;
        EXPECT_TRUE(same(color(target), type.color)) << type.name;
        EXPECT_FALSE(target.property("truncated").toBool()) << type.name;
    }

    void expectPlace(const char* name, const QRectF& expected)
    {
        const QRectF actual = place(name);
        EXPECT_NEAR(actual.x(), expected.x(), 0.01) << name;
        EXPECT_NEAR(actual.y(), expected.y(), 0.01) << name;
        EXPECT_NEAR(actual.width(), expected.width(), 0.01) << name;
        EXPECT_NEAR(actual.height(), expected.height(), 0.01) << name;
    }

    double contentHeight() { return item("contentView").height(); }
    double workspaceTop() { return place("header").bottom() + 18; }
};

TEST_F(LayoutTest, TheHeaderHasItsTextsAndItsSlot)
{
    enter(WindowModel::Ready);
    expect({"title", QStringLiteral("Stackreel"), 30, QFont::Black, white()});
    expect({"status", QStringLiteral("Beach day.MOV"), 14, QFont::Medium, white(0.66)});
    EXPECT_EQ(place("title").topLeft(), QPointF(24, 22));
    EXPECT_NEAR(place("status").top(), place("title").bottom() + 5, 0.01);
    expectPlace("progressSlot", QRectF(24, place("status").bottom() + 5, 220, 3));
    EXPECT_EQ(place("header").right(), 1180 - 24);
    EXPECT_EQ(place("header").bottom(), place("progressSlot").bottom());
}

TEST_F(LayoutTest, TheHeadersButtonIsAtTheTopRight)
{
    enter(WindowModel::Ready);
    QQuickItem& button = item("chooseButton");
    EXPECT_EQ(text(button), QStringLiteral("Choose video"));
    EXPECT_EQ(font(button).pixelSize(), 14);
    EXPECT_EQ(font(button).weight(), QFont::Bold);
    EXPECT_EQ(place(button).topRight(), QPointF(1180 - 24, 22));
    EXPECT_EQ(button.property("leftPadding").toDouble(), 15);
    EXPECT_EQ(button.property("rightPadding").toDouble(), 15);
    EXPECT_EQ(button.property("topPadding").toDouble(), 10);
    EXPECT_EQ(button.property("bottomPadding").toDouble(), 10);
    EXPECT_EQ(background(button).property("radius").toDouble(), 7);
    EXPECT_TRUE(same(color(background(button)), white(0.09)));
    press(centre(button));
    EXPECT_TRUE(same(color(background(button)), white(0.16)));
    release(QPoint(600, 30));
}

TEST_F(LayoutTest, TheStatusIsColouredByTheOutcome)
{
    enter(WindowModel::Failed);
    EXPECT_TRUE(same(color(item("status")), signalCoral));
    EXPECT_EQ(
        text(item("status")),
        QStringLiteral("Choose a horizontal video. Stackreel only stacks crops from horizontal sources."));
}

TEST_F(LayoutTest, TheProgressBarFillsItsSlotInTheAccent)
{
    enter(WindowModel::Exporting);
    EXPECT_EQ(place("exportProgress"), place("progressSlot"));
    EXPECT_TRUE(same(item("exportProgress").property("tint").value<QColor>(), signalCoral));
}

TEST_F(LayoutTest, WorkspaceAndInspectorShareTheRest)
{
    const double height = contentHeight() - 22 - workspaceTop();
    expectPlace("workspace", QRectF(24, workspaceTop(), 1180 - 48 - 18 - 310, height));
    expectPlace("inspector", QRectF(1180 - 24 - 310, workspaceTop(), 310, height));
    EXPECT_TRUE(same(color(item("background")), graphite));
    EXPECT_TRUE(same(color(item("workspace")), stage));
    EXPECT_TRUE(same(color(item("inspector")), panel));
    EXPECT_EQ(item("workspace").property("radius").toDouble(), 10);
    EXPECT_EQ(item("inspector").property("radius").toDouble(), 10);
    EXPECT_EQ(place("background"), QRectF(0, 0, 1180, contentHeight()));
}

TEST_F(LayoutTest, TheEmptyStateStandsInTheMiddle)
{
    expect({"emptyTitle", QStringLiteral("Pick two views from one clip"), 22, QFont::Black, white()});
    expect({"emptyText",
            QStringLiteral("Drag in almost any horizontal video. Stackreel makes a compatible preview, then "
                           "exports from the original file."),
            14, QFont::Medium, white(0.68)});
    EXPECT_EQ(place("appIcon").size(), QSizeF(82, 82));
    EXPECT_LE(place("emptyText").width(), 430);
    EXPECT_EQ(item("emptyText").property("horizontalAlignment").toInt(), Qt::AlignHCenter);
    EXPECT_NEAR(place("appIcon").top(), place("emptyTitle").bottom() + 18, 0.01);
    EXPECT_NEAR(place("emptyText").top(), place("appIcon").bottom() + 18, 0.01);
    EXPECT_NEAR(place("chooseFirstButton").top(), place("emptyText").bottom() + 18, 0.01);
    const QPointF middle = place("workspace").center();
    for (const char* name : {"emptyTitle", "appIcon", "emptyText", "chooseFirstButton"})
        EXPECT_NEAR(place(name).center().x(), middle.x(), 1) << name;
    EXPECT_NEAR((place("emptyTitle").top() + place("chooseFirstButton").bottom()) / 2, middle.y(), 1);
}

TEST_F(LayoutTest, TheFilledButtonShowsItsStates)
{
    QQuickItem& button = item("chooseFirstButton");
    EXPECT_EQ(text(button), QStringLiteral("Choose a video"));
    EXPECT_EQ(font(button).pixelSize(), 14);
    EXPECT_EQ(font(button).weight(), QFont::Bold);
    EXPECT_EQ(button.property("leftPadding").toDouble(), 16);
    EXPECT_EQ(button.property("rightPadding").toDouble(), 16);
    EXPECT_EQ(button.property("topPadding").toDouble(), 11);
    EXPECT_EQ(button.property("bottomPadding").toDouble(), 11);
    EXPECT_EQ(background(button).property("radius").toDouble(), 7);
    EXPECT_TRUE(same(color(background(button)), signalCoral));
    press(centre(button));
    EXPECT_TRUE(same(color(background(button)), srgb(1.0, 0.353, 0.239, 0.8)));
    release(QPoint(600, 30));
    EXPECT_EQ(world().openPanel->timesShown(), 0U);
    // Disabled without a clip.
    QQuickItem& disabled = item("exportButton");
    EXPECT_TRUE(same(color(background(disabled)), white(0.07)));
    EXPECT_TRUE(same(color(part("exportButton", "label")), white(0.42)));
}

TEST_F(LayoutTest, PreparingIsSaidInTheMiddle)
{
    enter(WindowModel::Preparing);
    expect({"preparingText", QStringLiteral("Preparing preview"), 18, QFont::Bold, white()});
    EXPECT_NEAR(place("preparingText").center().x(), place("workspace").center().x(), 1);
    const QQuickItem& spinner = part("preparingState", "spinner");
    EXPECT_NEAR(place("preparingText").top(), place(spinner).bottom() + 16, 0.01);
}

TEST_F(LayoutTest, TheVideoIsFittedIntoTheCanvas)
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

TEST_F(LayoutTest, ThePreviewsControlsAreAtTheBottomRight)
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

TEST_F(LayoutTest, TheCropsAreDrawnFromTheirRegions)
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
        // Half of the line lies outside the edge.
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

TEST_F(LayoutTest, TheResizeHandleLiesInsideTheCorner)
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

TEST_F(LayoutTest, TheTimelineLiesBelowTheCanvas)
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

TEST_F(LayoutTest, TheStripsPartsLieAtTheirTimes)
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
    // On whole points, which its odd place in the middle is not.
    EXPECT_NEAR(place(grip).center().x(), place("trimStartHandle").center().x(), 0.5);
    EXPECT_NEAR(place(grip).center().y(), place("trimStartHandle").center().y(), 0.5);
    EXPECT_TRUE(same(color(grip), black(0.58)));
    EXPECT_EQ(part("trimStartHandle", "face").property("radius").toDouble(), 3);
    EXPECT_EQ(place(part("trimStartHandle", "face")), place("trimStartHandle"));
}

TEST_F(LayoutTest, TheInspectorsSectionsFollowEachOther)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    const QRectF inspector = place("inspector");
    const QRectF frame = place("frameSection");
    EXPECT_EQ(frame.topLeft(), inspector.topLeft() + QPointF(22, 22));
    EXPECT_EQ(frame.width(), 310 - 44);
    EXPECT_NEAR(place("aspectPicker").top(), frame.top() + place("frameTitle").height() + 12, 0.01);
    EXPECT_NEAR(place("customSize").top(), place("aspectPicker").bottom() + 12, 0.01);
    EXPECT_NEAR(place("swapButton").top(), place("customSize").bottom() + 12, 0.01);
    EXPECT_EQ(place("swapButton").width(), frame.width());
    EXPECT_EQ(place("audioSection").top(), frame.bottom() + 26);
    EXPECT_EQ(place("sourceSection").top(), place("audioSection").bottom() + 26);
    EXPECT_NEAR(place("frameFact").top(), place("sourceSection").top() + place("sourceTitle").height() + 12,
                0.01);
    EXPECT_NEAR(place("videoFact").top(), place("frameFact").bottom() + 12, 0.01);
    const QRectF button = place("exportButton");
    EXPECT_EQ(button.width(), 310 - 44);
    EXPECT_EQ(button.bottomLeft(), inspector.bottomLeft() + QPointF(22, -22));
    for (const auto& [name, text] : {std::pair("frameTitle", "Frame"), std::pair("audioTitle", "Audio"),
                                     std::pair("sourceTitle", "Source")})
        expect({name, QString::fromLatin1(text), 17, QFont::Black, white()});
}

TEST_F(LayoutTest, TheDimensionFieldsStandOnEitherSideOfASign)
{
    windowModel().setAspectIndex(3);
    settle();
    EXPECT_NEAR(place("times").x(), place("widthField").right() + 10, 0.01);
    EXPECT_NEAR(place("heightField").x(), place("times").right() + 10, 0.01);
    EXPECT_NEAR(place("widthField").width(), place("heightField").width(), 1) << "whole points";
    EXPECT_EQ(place("widthField").height(), place("heightField").height());
    EXPECT_EQ(text(item("times")), QStringLiteral("\u00d7"));
    EXPECT_TRUE(same(color(item("times")), white(0.5)));
    for (const char* name : {"widthField", "heightField"}) {
        const QQuickItem& field = item(name);
        EXPECT_EQ(font(field).pixelSize(), 14);
        EXPECT_EQ(font(field).weight(), QFont::DemiBold);
        EXPECT_EQ(field.property("leftPadding").toDouble(), 10);
        EXPECT_EQ(field.property("rightPadding").toDouble(), 10);
        EXPECT_EQ(field.property("topPadding").toDouble(), 9);
        EXPECT_EQ(field.property("bottomPadding").toDouble(), 9);
        EXPECT_TRUE(same(color(background(field)), white(0.08)));
        EXPECT_EQ(background(field).property("radius").toDouble(), 6);
    }
    EXPECT_EQ(item("widthField").property("placeholderText").toString(), QStringLiteral("Width"));
    EXPECT_EQ(item("heightField").property("placeholderText").toString(), QStringLiteral("Height"));
}

TEST_F(LayoutTest, TheFactsAreRowsOfALabelAndAValue)
{
    enter(WindowModel::Ready);
    for (const auto& [name, label, value] :
         {std::tuple("frameFact", "Frame", u"1920 \u00d7 1080"), std::tuple("videoFact", "Video", u"H264"),
          std::tuple("lengthFact", "Length", u"0:20")}) {
        const QQuickItem& labelText = part(name, "label");
        const QQuickItem& valueText = part(name, "value");
        EXPECT_EQ(text(labelText), QString::fromLatin1(label));
        EXPECT_EQ(font(labelText).pixelSize(), 13);
        EXPECT_EQ(font(labelText).weight(), QFont::Medium);
        EXPECT_TRUE(same(color(labelText), white(0.62)));
        EXPECT_EQ(text(valueText), QString::fromUtf16(value));
        EXPECT_EQ(font(valueText).pixelSize(), 13);
        EXPECT_EQ(font(valueText).weight(), QFont::DemiBold);
        EXPECT_TRUE(QFontInfo(font(valueText)).fixedPitch()) << name;
        EXPECT_EQ(place(valueText).right(), place(name).right());
        EXPECT_NEAR(place(labelText).center().y(), place(valueText).center().y(), 0.51);
    }
}

TEST_F(LayoutTest, TheExportButtonsTextIsAtTheLeftAndItsSymbolAtTheRight)
{
    enter(WindowModel::Ready);
    QRectF button = place("exportButton");
    EXPECT_EQ(text(item("exportButton")), QStringLiteral("Export vertical video"));
    EXPECT_EQ(place(part("exportButton", "label")).left(), button.left() + 16);
    EXPECT_EQ(place(part("exportButton", "symbol")).right(), button.right() - 16);
    EXPECT_TRUE(part("exportButton", "symbol").isVisible());
    EXPECT_FALSE(part("exportButton", "spinner").isVisible());
    EXPECT_TRUE(same(color(background(item("exportButton"))), signalCoral));
    EXPECT_TRUE(same(color(part("exportButton", "label")), black()));
    window().startExport();
    settle();
    button = place("exportButton");
    EXPECT_EQ(text(item("exportButton")), QStringLiteral("Cancel export"));
    EXPECT_FALSE(part("exportButton", "symbol").isVisible());
    EXPECT_TRUE(part("exportButton", "spinner").isVisible());
    EXPECT_TRUE(same(color(part("exportButton", "spinner")), black()));
    EXPECT_EQ(place(part("exportButton", "spinner")).right(), button.right() - 16);
    EXPECT_TRUE(same(color(background(item("exportButton"))), signalCoral));
}

TEST_F(LayoutTest, TheSmallestWindowHoldsEverything)
{
    windowModel().setAspectIndex(3);
    window().window().resize(window().window().minimumSize());
    enter(WindowModel::Ready);
    const QRectF content(0, 0, item("contentView").width(), contentHeight());
    EXPECT_EQ(content.size(), QSizeF(980, 680));
    for (const char* name :
         {"workspace", "inspector", "timeline", "exportButton", "lengthFact", "chooseButton"})
        EXPECT_TRUE(content.contains(place(name))) << name;
    EXPECT_GE(place("exportButton").top(), place("sourceSection").bottom() + 26);
    EXPECT_GT(place("videoFrame").width(), 300);
    EXPECT_FALSE(part("swapButton", "label").property("truncated").toBool());
}

TEST_F(LayoutTest, ALongNameIsElidedInTheMiddleAndPushesNothingAway)
{
    const QRectF inspector = place("inspector");
    window().load(OfflineWindow::clip(), "/clips/" + std::string(200, 'w') + ".mov");
    settle();
    const QQuickItem& status = item("status");
    EXPECT_TRUE(status.property("truncated").toBool());
    EXPECT_EQ(status.property("elide").toInt(), Qt::ElideMiddle);
    EXPECT_LE(place(status).right(), place("chooseButton").left());
    EXPECT_EQ(place("chooseButton").right(), 1180 - 24);
    EXPECT_EQ(place("inspector"), inspector);
}

TEST_F(LayoutTest, AFailureOfManyLinesIsShownInOne)
{
    const double height = place("status").height();
    enter(WindowModel::Exporting);
    world().exports.back().task().fail(
        std::runtime_error("FFmpeg ended with status 1.\nfirst line\nlast line"));
    settle();
    EXPECT_EQ(place("status").height(), height);
    EXPECT_EQ(text(item("status")), QStringLiteral("FFmpeg ended with status 1. first line last line"));
    EXPECT_EQ(item("status").property("message").toString(),
              QStringLiteral("FFmpeg ended with status 1.\nfirst line\nlast line"));
}

} // namespace

} // namespace stackreel
