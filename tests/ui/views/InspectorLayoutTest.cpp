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

TEST_F(InspectorLayoutTest, ThePickerIsRightAlignedBesideItsLabel)
{
    const QRectF frame = place("frameSection");
    EXPECT_EQ(text(item("aspectLabel")), QStringLiteral("Aspect ratio"));
    EXPECT_EQ(place("aspectLabel").left(), frame.left());
    EXPECT_EQ(place("aspectPicker").right(), frame.right());
    EXPECT_NEAR(place("aspectLabel").center().y(), place("aspectPicker").center().y(), 0.51);
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

TEST_F(InspectorLayoutTest, EachPropertyOfTheSourceIsARowOfLabelAndValue)
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
        EXPECT_TRUE(same(color(valueText), white()));
        EXPECT_EQ(place(labelText).left(), place(name).left());
        EXPECT_EQ(text(valueText), QString::fromUtf16(value));
        EXPECT_EQ(font(valueText).pixelSize(), 13);
        EXPECT_EQ(font(valueText).weight(), QFont::DemiBold);
        EXPECT_TRUE(QFontInfo(font(valueText)).fixedPitch()) << name;
        EXPECT_EQ(place(valueText).right(), place(name).right());
        EXPECT_NEAR(place(labelText).center().y(), place(valueText).center().y(), 0.51);
    }
}

TEST_F(InspectorLayoutTest, TheExportButtonHasItsTextAtTheLeftAndItsSymbolAtTheRight)
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

} // namespace

} // namespace stackreel
