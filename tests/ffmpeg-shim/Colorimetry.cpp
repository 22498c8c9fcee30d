#include "tests/ffmpeg-shim/Colorimetry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace stackreel::shim
{

namespace
{

using Matrix = std::array<Triple, 3>;

constexpr Triple white{0.3127 / 0.3290, 1, (1 - 0.3127 - 0.3290) / 0.3290};

Triple product(const Matrix& matrix, const Triple& values)
{
    Triple result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * values[column];
    return result;
}

Matrix inverse(const Matrix& m)
{
    Matrix result{};
    const auto minor = [&](std::size_t row, std::size_t column) {
        const std::size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3;
        const std::size_t c1 = (column + 1) % 3, c2 = (column + 2) % 3;
        return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
    };
    const double determinant = m[0][0] * minor(0, 0) + m[0][1] * minor(0, 1) + m[0][2] * minor(0, 2);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[column][row] = minor(row, column) / determinant;
    return result;
}

Matrix toXyz(const Primaries& primaries)
{
    Matrix columns{};
    for (std::size_t index = 0; index < 3; ++index) {
        const auto [x, y] = primaries[index];
        columns[0][index] = x / y;
        columns[1][index] = 1;
        columns[2][index] = (1 - x - y) / y;
    }
    const Triple scales = product(inverse(columns), white);
    for (Triple& row : columns)
        for (std::size_t index = 0; index < 3; ++index)
            row[index] *= scales[index];
    return columns;
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

double hueOf(double a, double b)
{
    const double degrees = std::atan2(b, a) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

double meanHue(double one, double other, bool grey)
{
    if (grey)
        return one + other;
    if (std::abs(one - other) <= 180)
        return (one + other) / 2;
    return one + other < 360 ? (one + other + 360) / 2 : (one + other - 360) / 2;
}

/// The factor √(C⁷ / (C⁷ + 25⁷)).
double chromaFactor(double chroma)
{
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

} // namespace

Triple xyzOf(const Triple& rgb, const Primaries& primaries)
{
    return product(toXyz(primaries), rgb);
}

Triple rgbOf(const Triple& xyz, const Primaries& primaries)
{
    return product(inverse(toXyz(primaries)), xyz);
}

Triple labOf(const Triple& xyz)
{
    Triple f{};
    for (std::size_t index = 0; index < 3; ++index) {
        const double ratio = std::max(xyz[index], 0.0) / white[index];
        f[index] = ratio > 216.0 / 24389 ? std::cbrt(ratio) : (24389.0 / 27 * ratio + 16) / 116;
    }
    return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

double differenceOf(const Triple& lab, const Triple& otherLab)
{
    const double meanOldChroma = (std::hypot(lab[1], lab[2]) + std::hypot(otherLab[1], otherLab[2])) / 2;
    const double stretch = 1 + 0.5 * (1 - chromaFactor(meanOldChroma));
    const double a1 = lab[1] * stretch, a2 = otherLab[1] * stretch;
    const double chroma1 = std::hypot(a1, lab[2]), chroma2 = std::hypot(a2, otherLab[2]);
    const double hue1 = hueOf(a1, lab[2]), hue2 = hueOf(a2, otherLab[2]);
    const bool grey = chroma1 * chroma2 == 0;

    double hueStep = grey ? 0 : hue2 - hue1;
    hueStep -= hueStep > 180 ? 360 : 0;
    hueStep += hueStep < -180 ? 360 : 0;
    const double lightness = otherLab[0] - lab[0];
    const double chroma = chroma2 - chroma1;
    const double hue = 2 * std::sqrt(chroma1 * chroma2) * std::sin(radians(hueStep / 2));

    const double meanChroma = (chroma1 + chroma2) / 2;
    const double mean = meanHue(hue1, hue2, grey);
    const double weight = 1 - 0.17 * std::cos(radians(mean - 30)) + 0.24 * std::cos(radians(2 * mean)) +
                          0.32 * std::cos(radians(3 * mean + 6)) - 0.20 * std::cos(radians(4 * mean - 63));
    const double middle = std::pow((lab[0] + otherLab[0]) / 2 - 50, 2);
    const double l = lightness / (1 + 0.015 * middle / std::sqrt(20 + middle));
    const double c = chroma / (1 + 0.045 * meanChroma);
    const double h = hue / (1 + 0.015 * meanChroma * weight);
    const double turn = 60 * std::exp(-std::pow((mean - 275) / 25, 2));
    const double rotation = -std::sin(radians(turn)) * 2 * chromaFactor(meanChroma);
    return std::sqrt(l * l + c * c + h * h + rotation * c * h);
}

Triple codesOf(const Triple& rgb, const LumaWeights& weights, bool fullRange, int bits)
{
    const double luma =
        weights.red * rgb[0] + (1 - weights.red - weights.blue) * rgb[1] + weights.blue * rgb[2];
    const double cb = (rgb[2] - luma) / (2 * (1 - weights.blue));
    const double cr = (rgb[0] - luma) / (2 * (1 - weights.red));
    const double step = std::exp2(bits - 8);
    if (!fullRange)
        return {(219 * luma + 16) * step, (224 * cb + 128) * step, (224 * cr + 128) * step};
    const double largest = std::exp2(bits) - 1;
    return {largest * luma, largest * cb + 128 * step, largest * cr + 128 * step};
}

Triple signalOf(const Triple& codes, const LumaWeights& weights)
{
    const double luma = (codes[0] - 16) / 219;
    const double red = luma + 2 * (1 - weights.red) * (codes[2] - 128) / 224;
    const double blue = luma + 2 * (1 - weights.blue) * (codes[1] - 128) / 224;
    const double green = (luma - weights.red * red - weights.blue * blue) / (1 - weights.red - weights.blue);
    return {red, green, blue};
}

} // namespace stackreel::shim
