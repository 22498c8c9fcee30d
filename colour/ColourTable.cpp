#include "colour/ColourTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace stackreel
{

namespace
{

// Light, in cd/m².
constexpr double referenceWhite = 203; // ITU-R BT.2408, table 1
constexpr double peakWhite = 1000;     // the nominal peak of HLG (ITU-R BT.2100, table 5), usual for PQ
constexpr double displayGamma = 2.4;   // ITU-R BT.1886

using Matrix = std::array<Rgb, 3>;

// From linear R'G'B' with the named primaries to linear R'G'B' with those of BT.709; all have the white of
// D65. SMPTE RP 177 has the calculation from the chromaticities in ITU-T H.273, table 2.
constexpr Matrix fromBt709{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr Matrix fromBt2020{
    {{1.660491, -0.587641, -0.072850}, {-0.124550, 1.132900, -0.008349}, {-0.018151, -0.100579, 1.118730}}};
constexpr Matrix fromSmpte170m{
    {{0.939542, 0.050181, 0.010277}, {0.017772, 0.965793, 0.016435}, {-0.001622, -0.004370, 1.005991}}};
constexpr Matrix fromP3{
    {{1.224940, -0.224940, 0.000000}, {-0.042057, 1.042057, 0.000000}, {-0.019638, -0.078636, 1.098274}}};

Rgb each(const Rgb& values, double (*function)(double))
{
    return {function(values[0]), function(values[1]), function(values[2])};
}

Rgb scaled(const Rgb& values, double factor)
{
    return {values[0] * factor, values[1] * factor, values[2] * factor};
}

Rgb product(const Matrix& matrix, const Rgb& values)
{
    Rgb result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * values[column];
    return result;
}

/// The light of the display for a signal, where 1 is the light of white.
double displayLight(double signal)
{
    return std::pow(std::clamp(signal, 0.0, 1.0), displayGamma);
}

double displaySignal(double light)
{
    return std::pow(std::clamp(light, 0.0, 1.0), 1 / displayGamma);
}

/// The light of a PQ signal in cd/m² (ITU-R BT.2100, table 4).
double pqLight(double signal)
{
    constexpr double m1 = 2610.0 / 16384;
    constexpr double m2 = 2523.0 / 4096 * 128;
    constexpr double c1 = 3424.0 / 4096;
    constexpr double c2 = 2413.0 / 4096 * 32;
    constexpr double c3 = 2392.0 / 4096 * 32;
    const double power = std::pow(std::max(signal, 0.0), 1 / m2);
    return 10000 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
}

/// The light of the scene for an HLG signal, from 0 to 1 (ITU-R BT.2100, table 5).
double hlgSceneLight(double signal)
{
    constexpr double a = 0.17883277;
    constexpr double b = 0.28466892;
    constexpr double c = 0.55991073;
    return signal <= 0.5 ? signal * signal / 3 : (std::exp((signal - c) / a) + b) / 12;
}

/// The light of an HLG display with the nominal peak in cd/m² (ITU-R BT.2100, table 5), for light of the
/// scene with the primaries of BT.709.
Rgb hlgDisplayLight(const Rgb& scene)
{
    constexpr double systemGamma = 1.2;
    const double luminance = 0.2126 * scene[0] + 0.7152 * scene[1] + 0.0722 * scene[2];
    return luminance > 0 ? scaled(scene, peakWhite * std::pow(luminance, systemGamma - 1)) : Rgb{};
}

/// The signal for light in cd/m² with the primaries of BT.709.
Rgb fromHdrLight(const Rgb& light)
{
    return each(toneMapped(scaled(light, 1 / referenceWhite)), displaySignal);
}

template <const Matrix& toBt709>
Rgb fromPq(const Rgb& signal)
{
    return fromHdrLight(product(toBt709, each(signal, pqLight)));
}

template <const Matrix& toBt709>
Rgb fromHlg(const Rgb& signal)
{
    return fromHdrLight(hlgDisplayLight(product(toBt709, each(signal, hlgSceneLight))));
}

Rgb fromPrimaries(const Matrix& matrix, const Rgb& signal)
{
    return each(product(matrix, each(signal, displayLight)), displaySignal);
}

/// A hyperbola that continues the line y = x at `knee` with the slope 1 and reaches 1 at `peak`.
double aboveKnee(double value, double knee, double peak)
{
    const double a = -knee * knee * (peak - 1) / (knee * knee - 2 * knee + peak);
    const double b = (knee * knee - 2 * knee * peak + peak) / (peak - 1);
    return (b * b + 2 * b * knee + knee * knee) / (b - a) * (value + a) / (value + b);
}

void append(std::string& text, double value)
{
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 5).ptr;
    text.append(digits.data(), end);
}

} // namespace

const std::vector<ColourTable>& colourTables()
{
    static const std::vector<ColourTable> tables{
        {"pq", fromPq<fromBt2020>},
        {"pq-p3", fromPq<fromP3>},
        {"pq-bt709", fromPq<fromBt709>},
        {"hlg", fromHlg<fromBt2020>},
        {"hlg-p3", fromHlg<fromP3>},
        {"hlg-bt709", fromHlg<fromBt709>},
        {"gamma22",
         [](const Rgb& signal) {
             return each(signal, [](double v) { return std::pow(v, 2.2 / displayGamma); });
         }},
        {"gamma28",
         [](const Rgb& signal) {
             return each(signal, [](double v) { return std::pow(v, 2.8 / displayGamma); });
         }},
        {"smpte170m", [](const Rgb& signal) { return fromPrimaries(fromSmpte170m, signal); }},
        {"bt2020", [](const Rgb& signal) { return fromPrimaries(fromBt2020, signal); }},
        {"p3", [](const Rgb& signal) { return fromPrimaries(fromP3, signal); }},
    };
    return tables;
}

Rgb toneMapped(const Rgb& light)
{
    constexpr double knee = 0.6;
    const double largest = std::max({light[0], light[1], light[2]});
    if (largest <= knee)
        return light;
    return scaled(light, aboveKnee(largest, knee, peakWhite / referenceWhite) / largest);
}

std::string cubeFile(const ColourTable& table, int size)
{
    std::string text = "LUT_3D_SIZE " + std::to_string(size) + "\n";
    const auto value = [&](int index) { return static_cast<double>(index) / (size - 1); };
    for (int blue = 0; blue < size; ++blue)
        for (int green = 0; green < size; ++green)
            for (int red = 0; red < size; ++red) {
                const Rgb result = table.convert({value(red), value(green), value(blue)});
                for (std::size_t index = 0; index < 3; ++index) {
                    append(text, result[index]);
                    text += index < 2 ? ' ' : '\n';
                }
            }
    return text;
}

} // namespace stackreel
