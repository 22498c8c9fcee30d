#include "tests/ui/views/LayoutTest.h"

#include <array>
#include <cmath>

namespace stackreel
{

QColor srgb(double red, double green, double blue, double opacity)
{
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
                            static_cast<float>(opacity));
}

QColor white(double opacity)
{
    return srgb(1, 1, 1, opacity);
}

QColor black(double opacity)
{
    return srgb(0, 0, 0, opacity);
}

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

void LayoutTest::expect(const Type& type)
{
    const QQuickItem& target = item(type.name);
    EXPECT_EQ(text(target), type.text) << type.name;
    EXPECT_EQ(font(target).pixelSize(), type.pixels) << type.name;
    EXPECT_EQ(font(target).weight(), type.weight) << type.name;
    EXPECT_TRUE(same(color(target), type.color)) << type.name;
    EXPECT_FALSE(target.property("truncated").toBool()) << type.name;
}

void LayoutTest::expectGeometry(const char* name, const QRectF& expected)
{
    const QRectF actual = geometry(name);
    EXPECT_NEAR(actual.x(), expected.x(), 0.01) << name;
    EXPECT_NEAR(actual.y(), expected.y(), 0.01) << name;
    EXPECT_NEAR(actual.width(), expected.width(), 0.01) << name;
    EXPECT_NEAR(actual.height(), expected.height(), 0.01) << name;
}

} // namespace stackreel
