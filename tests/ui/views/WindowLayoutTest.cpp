#include "tests/ui/views/LayoutTest.h"
#include "ui/Typefaces.h"

#include <QFontInfo>

namespace stackreel
{

namespace
{

using WindowLayoutTest = LayoutTest;

TEST_F(WindowLayoutTest, TheHeaderHasTitleStatusAndProgress)
{
    enter(WindowModel::Ready);
    expect({"title", QStringLiteral("Stackreel"), 30, QFont::Black, white()});
    expect({"status", QStringLiteral("Beach day.MOV"), 14, QFont::Medium, white(0.66)});
    EXPECT_EQ(geometry("title").topLeft(), QPointF(24, 22));
    EXPECT_NEAR(geometry("status").top(), geometry("title").bottom() + 5, 0.01);
    expectGeometry("progressSlot", QRectF(24, geometry("status").bottom() + 5, 220, 3));
    EXPECT_EQ(geometry("header").right(), 1180 - 24);
    EXPECT_EQ(geometry("header").bottom(), geometry("progressSlot").bottom());
}

TEST_F(WindowLayoutTest, TheHeadersButtonIsAtTheTopRight)
{
    enter(WindowModel::Ready);
    QQuickItem& button = item("chooseButton");
    EXPECT_EQ(text(button), QStringLiteral("Choose video"));
    EXPECT_EQ(font(button).pixelSize(), 14);
    EXPECT_EQ(font(button).weight(), QFont::Bold);
    EXPECT_EQ(geometry(button).topRight(), QPointF(1180 - 24, 22));
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

TEST_F(WindowLayoutTest, AFailureIsShownInTheAccentColour)
{
    enter(WindowModel::Failed);
    EXPECT_TRUE(same(color(item("status")), signalCoral));
    EXPECT_EQ(
        text(item("status")),
        QStringLiteral("Choose a horizontal video. Stackreel only stacks crops from horizontal sources."));
}

TEST_F(WindowLayoutTest, TheProgressBarHasTheAccentColour)
{
    enter(WindowModel::Exporting);
    EXPECT_EQ(geometry("exportProgress"), geometry("progressSlot"));
    EXPECT_TRUE(same(item("exportProgress").property("tint").value<QColor>(), signalCoral));
}

TEST_F(WindowLayoutTest, WorkspaceAndInspectorFillTheContentBelowTheHeader)
{
    const double height = contentHeight() - 22 - workspaceTop();
    expectGeometry("workspace", QRectF(24, workspaceTop(), 1180 - 48 - 18 - 310, height));
    expectGeometry("inspector", QRectF(1180 - 24 - 310, workspaceTop(), 310, height));
    EXPECT_TRUE(same(color(item("background")), graphite));
    EXPECT_TRUE(same(color(item("workspace")), stage));
    EXPECT_TRUE(same(color(item("inspector")), panel));
    EXPECT_EQ(item("workspace").property("radius").toDouble(), 10);
    EXPECT_EQ(item("inspector").property("radius").toDouble(), 10);
    EXPECT_EQ(geometry("background"), QRectF(0, 0, 1180, contentHeight()));
}

TEST_F(WindowLayoutTest, TheEmptyStateIsCentred)
{
    expect({"emptyTitle", QStringLiteral("Pick two views from one clip"), 22, QFont::Black, white()});
    expect({"emptyText",
            QStringLiteral("Drag in almost any horizontal video. Stackreel makes a compatible preview, then "
                           "exports from the original file."),
            14, QFont::Medium, white(0.68)});
    EXPECT_EQ(geometry("appIcon").size(), QSizeF(82, 82));
    EXPECT_LE(geometry("emptyText").width(), 430);
    EXPECT_EQ(item("emptyText").property("horizontalAlignment").toInt(), Qt::AlignHCenter);
    EXPECT_NEAR(geometry("appIcon").top(), geometry("emptyTitle").bottom() + 18, 0.01);
    EXPECT_NEAR(geometry("emptyText").top(), geometry("appIcon").bottom() + 18, 0.01);
    EXPECT_NEAR(geometry("chooseFirstButton").top(), geometry("emptyText").bottom() + 18, 0.01);
    const QPointF middle = geometry("workspace").center();
    for (const char* name : {"emptyTitle", "appIcon", "emptyText", "chooseFirstButton"})
        EXPECT_NEAR(geometry(name).center().x(), middle.x(), 1) << name;
    EXPECT_NEAR((geometry("emptyTitle").top() + geometry("chooseFirstButton").bottom()) / 2, middle.y(), 1);
}

TEST_F(WindowLayoutTest, TheFilledButtonShowsPressedAndDisabledStates)
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
    EXPECT_EQ(fakes().openPanel->timesShown(), 0U);
    // The export button is disabled while no clip is loaded.
    QQuickItem& disabled = item("exportButton");
    EXPECT_TRUE(same(color(background(disabled)), white(0.07)));
    EXPECT_TRUE(same(color(child("exportButton", "label")), white(0.42)));
}

TEST_F(WindowLayoutTest, ThePreparingStateIsCentred)
{
    enter(WindowModel::Preparing);
    expect({"preparingText", QStringLiteral("Preparing preview"), 18, QFont::Bold, white()});
    EXPECT_NEAR(geometry("preparingText").center().x(), geometry("workspace").center().x(), 1);
    const QQuickItem& spinner = child("preparingState", "spinner");
    EXPECT_NEAR(geometry("preparingText").top(), geometry(spinner).bottom() + 16, 0.01);
    EXPECT_NEAR((geometry(spinner).top() + geometry("preparingText").bottom()) / 2,
                geometry("workspace").center().y(), 1);
}

TEST_F(WindowLayoutTest, TitlesUseTheTitleFontAndNumbersAMonospacedFont)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    ASSERT_NE(Typefaces::title(), Typefaces::text()) << "the package of the title font is not installed";
    for (const char* name : {"title", "emptyTitle", "frameTitle", "audioTitle", "sourceTitle"})
        EXPECT_EQ(QFontInfo(font(item(name))).family(), Typefaces::title()) << name;
    for (const char* name :
         {"status", "trimTitle", "aspectLabel", "chooseButton", "exportButton", "audioSwitch"})
        EXPECT_EQ(QFontInfo(font(item(name))).family(), Typefaces::text()) << name;
    for (const char* name : {"widthField", "heightField"})
        EXPECT_TRUE(QFontInfo(font(item(name))).fixedPitch()) << name;
}

TEST_F(WindowLayoutTest, EverythingFitsIntoTheMinimumSize)
{
    windowModel().setAspectIndex(3);
    window().window().resize(window().window().minimumSize());
    enter(WindowModel::Ready);
    const QRectF content(0, 0, item("contentView").width(), contentHeight());
    EXPECT_EQ(content.size(), QSizeF(980, 680));
    for (const char* name :
         {"workspace", "inspector", "timeline", "exportButton", "lengthFact", "chooseButton"})
        EXPECT_TRUE(content.contains(geometry(name))) << name;
    EXPECT_GE(geometry("exportButton").top(), geometry("sourceSection").bottom() + 26);
    EXPECT_GT(geometry("videoFrame").width(), 300);
    EXPECT_FALSE(child("swapButton", "label").property("truncated").toBool());
}

TEST_F(WindowLayoutTest, ElidesALongNameInTheMiddle)
{
    const QRectF inspector = geometry("inspector");
    window().load(WindowWithFakes::clip(), "/clips/" + std::string(200, 'w') + ".mov");
    settle();
    const QQuickItem& status = item("status");
    EXPECT_TRUE(status.property("truncated").toBool());
    EXPECT_EQ(status.property("elide").toInt(), Qt::ElideMiddle);
    EXPECT_LE(geometry(status).right(), geometry("chooseButton").left());
    EXPECT_EQ(geometry("chooseButton").right(), 1180 - 24);
    EXPECT_EQ(geometry("inspector"), inspector);
}

TEST_F(WindowLayoutTest, ShowsAMessageOfSeveralLinesInOneLine)
{
    const double height = geometry("status").height();
    enter(WindowModel::Exporting);
    fakes().exports.back().task().fail(
        std::runtime_error("FFmpeg ended with status 1.\nfirst line\nlast line"));
    settle();
    EXPECT_EQ(geometry("status").height(), height);
    EXPECT_EQ(text(item("status")), QStringLiteral("FFmpeg ended with status 1. first line last line"));
    EXPECT_EQ(item("status").property("message").toString(),
              QStringLiteral("FFmpeg ended with status 1.\nfirst line\nlast line"));
    EXPECT_EQ(item("status").property("elide").toInt(), Qt::ElideMiddle);
}

} // namespace

} // namespace stackreel
