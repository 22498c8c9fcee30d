#include "tests/ui/views/LayoutTest.h"

#include <QFontInfo>

namespace stackreel
{

namespace
{

using InspectorLayoutTest = LayoutTest;

TEST_F(InspectorLayoutTest, TheSectionsOfTheInspectorAreStackedWithTheirSpacing)
{
    windowModel().setAspectIndex(3);
    enter(WindowModel::Ready);
    const QRectF inspector = geometry("inspector");
    const QRectF frame = geometry("frameSection");
    EXPECT_EQ(frame.topLeft(), inspector.topLeft() + QPointF(22, 22));
    EXPECT_EQ(frame.width(), 310 - 44);
    EXPECT_NEAR(geometry("aspectPicker").top(), frame.top() + geometry("frameTitle").height() + 12, 0.01);
    EXPECT_NEAR(geometry("customSize").top(), geometry("aspectPicker").bottom() + 12, 0.01);
    EXPECT_NEAR(geometry("swapButton").top(), geometry("customSize").bottom() + 12, 0.01);
    EXPECT_EQ(geometry("swapButton").width(), frame.width());
    EXPECT_EQ(geometry("audioSection").top(), frame.bottom() + 26);
    EXPECT_EQ(geometry("sourceSection").top(), geometry("audioSection").bottom() + 26);
    EXPECT_NEAR(geometry("frameFact").top(),
                geometry("sourceSection").top() + geometry("sourceTitle").height() + 12, 0.01);
    EXPECT_NEAR(geometry("videoFact").top(), geometry("frameFact").bottom() + 12, 0.01);
    const QRectF button = geometry("exportButton");
    EXPECT_EQ(button.width(), 310 - 44);
    EXPECT_EQ(button.bottomLeft(), inspector.bottomLeft() + QPointF(22, -22));
    for (const auto& [name, text] : {std::pair("frameTitle", "Frame"), std::pair("audioTitle", "Audio"),
                                     std::pair("sourceTitle", "Source")})
        expect({name, QString::fromLatin1(text), 17, QFont::Black, white()});
}

TEST_F(InspectorLayoutTest, ThePickerIsRightAlignedBesideItsLabel)
{
    const QRectF frame = geometry("frameSection");
    EXPECT_EQ(text(item("aspectLabel")), QStringLiteral("Aspect ratio"));
    EXPECT_EQ(geometry("aspectLabel").left(), frame.left());
    EXPECT_EQ(geometry("aspectPicker").right(), frame.right());
    EXPECT_NEAR(geometry("aspectLabel").center().y(), geometry("aspectPicker").center().y(), 0.51);
}

TEST_F(InspectorLayoutTest, TheSwitchHasTheAccentColourWhenOn)
{
    const auto tint = [this] {
        return color(*item("audioSwitch").property("indicator").value<QQuickItem*>());
    };
    EXPECT_TRUE(same(tint(), signalCoral));
    windowModel().setIncludeAudio(false);
    EXPECT_FALSE(same(tint(), signalCoral));
}

TEST_F(InspectorLayoutTest, TheSizeFieldsAreLaidOutBesideAMultiplicationSign)
{
    windowModel().setAspectIndex(3);
    settle();
    EXPECT_NEAR(geometry("times").x(), geometry("widthField").right() + 10, 0.01);
    EXPECT_NEAR(geometry("heightField").x(), geometry("times").right() + 10, 0.01);
    EXPECT_NEAR(geometry("widthField").width(), geometry("heightField").width(), 1) << "whole points";
    EXPECT_EQ(geometry("widthField").height(), geometry("heightField").height());
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

TEST_F(InspectorLayoutTest, EachPropertyOfTheSourceIsARowOfLabelAndValue)
{
    enter(WindowModel::Ready);
    for (const auto& [name, label, value] :
         {std::tuple("frameFact", "Frame", u"1920 \u00d7 1080"), std::tuple("videoFact", "Video", u"H264"),
          std::tuple("lengthFact", "Length", u"0:20")}) {
        const QQuickItem& labelText = child(name, "label");
        const QQuickItem& valueText = child(name, "value");
        EXPECT_EQ(text(labelText), QString::fromLatin1(label));
        EXPECT_EQ(font(labelText).pixelSize(), 13);
        EXPECT_EQ(font(labelText).weight(), QFont::Medium);
        EXPECT_TRUE(same(color(labelText), white(0.62)));
        EXPECT_TRUE(same(color(valueText), white()));
        EXPECT_EQ(geometry(labelText).left(), geometry(name).left());
        EXPECT_EQ(text(valueText), QString::fromUtf16(value));
        EXPECT_EQ(font(valueText).pixelSize(), 13);
        EXPECT_EQ(font(valueText).weight(), QFont::DemiBold);
        EXPECT_TRUE(QFontInfo(font(valueText)).fixedPitch()) << name;
        EXPECT_EQ(geometry(valueText).right(), geometry(name).right());
        EXPECT_NEAR(geometry(labelText).center().y(), geometry(valueText).center().y(), 0.51);
    }
}

TEST_F(InspectorLayoutTest, TheExportButtonHasItsTextAtTheLeftAndItsSymbolAtTheRight)
{
    enter(WindowModel::Ready);
    QRectF button = geometry("exportButton");
    EXPECT_EQ(text(item("exportButton")), QStringLiteral("Export vertical video"));
    EXPECT_EQ(geometry(child("exportButton", "label")).left(), button.left() + 16);
    EXPECT_EQ(geometry(child("exportButton", "symbol")).right(), button.right() - 16);
    EXPECT_TRUE(child("exportButton", "symbol").isVisible());
    EXPECT_FALSE(child("exportButton", "spinner").isVisible());
    EXPECT_TRUE(same(color(background(item("exportButton"))), signalCoral));
    EXPECT_TRUE(same(color(child("exportButton", "label")), black()));
    window().startExport();
    settle();
    button = geometry("exportButton");
    EXPECT_EQ(text(item("exportButton")), QStringLiteral("Cancel export"));
    EXPECT_FALSE(child("exportButton", "symbol").isVisible());
    EXPECT_TRUE(child("exportButton", "spinner").isVisible());
    EXPECT_TRUE(same(color(child("exportButton", "spinner")), black()));
    EXPECT_EQ(geometry(child("exportButton", "spinner")).right(), button.right() - 16);
    EXPECT_TRUE(same(color(background(item("exportButton"))), signalCoral));
}

} // namespace

} // namespace stackreel
