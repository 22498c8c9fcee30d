#include "colour/ColourCube.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

/// What the cube gives for components from 0 to 1.
Rgb valueIn(const ColourCube& cube, const Rgb& components)
{
    FourFloats place{};
    for (int index = 0; index < 3; ++index)
        place[index] = static_cast<float>(components[static_cast<std::size_t>(index)]) * ColourCube::largest;
    const FourFloats value = cube.at(place);
    return {value[0], value[1], value[2]};
}

void expectNear(const Rgb& value, const Rgb& expected, double tolerance)
{
    for (std::size_t index = 0; index < 3; ++index)
        EXPECT_NEAR(value[index], expected[index], tolerance) << testing::PrintToString(expected);
}

/// Calls `check` with components that lie between the points in every order.
void forManyColours(const std::function<void(const Rgb&)>& check)
{
    for (double red = 0; red <= 1; red += 0.0769)
        for (double green = 0; green <= 1; green += 0.0909)
            for (double blue = 0; blue <= 1; blue += 0.1111)
                check({red, green, blue});
    check({1, 1, 1});
    check({1, 0, 0.5});
}

} // namespace

TEST(ColourCube, IsExactForLinearFunctions)
{
    const auto function = [](const Rgb& rgb) {
        return Rgb{rgb[0] + 0.2 * rgb[1] - 0.1, rgb[2], 3 * rgb[1] - rgb[0] + 0.5 * rgb[2]};
    };
    const ColourCube cube(function);
    forManyColours([&](const Rgb& rgb) { expectNear(valueIn(cube, rgb), function(rgb), 1e-5); });
}

TEST(ColourCube, IsExactAtThePointsOfAnyFunction)
{
    const auto function = [](const Rgb& rgb) {
        return Rgb{std::sin(9 * rgb[0] + rgb[1]), rgb[1] * rgb[2], std::cos(5 * rgb[2] * rgb[0])};
    };
    const ColourCube cube(function);
    for (int point = 0; point < colourTablePoints; ++point) {
        const double value = point / static_cast<double>(colourTablePoints - 1);
        for (const Rgb& rgb : {Rgb{value, 0.25, 0.5}, Rgb{1, value, 0.75}, Rgb{0.125, 1, value}})
            expectNear(valueIn(cube, rgb), function(rgb), 1e-5);
    }
}

// The vertices of the tetrahedron around a place follow the largest fraction first.
TEST(ColourCube, InterpolatesBetweenTheFourPointsOfATetrahedron)
{
    const auto function = [](const Rgb& rgb) { return Rgb{rgb[0] * rgb[1] * rgb[2], 0, 0}; };
    const ColourCube cube(function);
    const double step = 1.0 / (colourTablePoints - 1);
    const auto product = [&](double red, double green, double blue) {
        return (10 + red) * (20 + green) * (5 + blue) * step * step * step;
    };
    const double expected =
        0.3 * product(0, 0, 0) + 0.2 * product(0, 1, 0) + 0.4 * product(0, 1, 1) + 0.1 * product(1, 1, 1);
    expectNear(valueIn(cube, {10.1 * step, 20.7 * step, 5.5 * step}), {expected, 0, 0}, 1e-6);
}

} // namespace stackreel
