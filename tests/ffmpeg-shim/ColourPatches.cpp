#include "tests/ffmpeg-shim/ColourPatches.h"

#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace stackreel::shim
{

namespace
{

// The colours of a ColorChecker chart in sRGB, as its maker published them, and eight more.
constexpr std::array<std::array<int, 3>, 32> chart{
    {{115, 82, 68},   {194, 150, 130}, {98, 122, 157},  {87, 108, 67},   {133, 128, 177}, {103, 189, 170},
     {214, 126, 44},  {80, 91, 166},   {193, 90, 99},   {94, 60, 108},   {157, 188, 64},  {224, 163, 46},
     {56, 61, 150},   {70, 148, 73},   {175, 54, 60},   {231, 199, 31},  {187, 86, 149},  {8, 133, 161},
     {243, 243, 242}, {200, 200, 200}, {160, 160, 160}, {122, 122, 121}, {85, 85, 85},    {52, 52, 52},
     {191, 0, 0},     {0, 191, 0},     {0, 0, 191},     {0, 191, 191},   {191, 0, 191},   {191, 191, 0},
     {255, 255, 255}, {16, 16, 16}}};

// Light in cd/m² with the primaries of the source: highlights of 300 to 1000, and saturated colours.
constexpr std::array<Triple, 8> highlights{{{300, 300, 300},
                                            {500, 500, 500},
                                            {800, 800, 800},
                                            {1000, 1000, 1000},
                                            {300, 10, 10},
                                            {10, 200, 10},
                                            {5, 5, 150},
                                            {900, 500, 100}}};

constexpr double referenceWhite = 203; // cd/m², ITU-R BT.2408, table 1
constexpr double peakWhite = 1000;

double displayLight(double signal, double gamma = 2.4)
{
    return std::pow(std::clamp(signal, 0.0, 1.0), gamma);
}

// ITU-R BT.2100, table 4.
constexpr double m1 = 0.1593017578125, m2 = 78.84375, c1 = 0.8359375, c2 = 18.8515625, c3 = 18.6875;

double pqSignal(double light)
{
    const double power = std::pow(light / 10000, m1);
    return std::pow((c1 + c2 * power) / (1 + c3 * power), m2);
}

double pqLight(double signal)
{
    const double power = std::pow(signal, 1 / m2);
    return 10000 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
}

// ITU-R BT.2100, table 5.
double hlgSignal(double light)
{
    return light <= 1.0 / 12 ? std::sqrt(3 * light)
                             : 0.17883277 * std::log(12 * light - 0.28466892) + 0.55991073;
}

double hlgSceneLight(double signal)
{
    return signal <= 0.5 ? signal * signal / 3
                         : (std::exp((signal - 0.55991073) / 0.17883277) + 0.28466892) / 12;
}

double luminance(const Triple& light, const Primaries& primaries)
{
    return xyzOf(light, primaries)[1];
}

Triple hlgSignals(const Triple& displayed, const Primaries& primaries)
{
    const double scene = std::pow(luminance(displayed, primaries) / peakWhite, 1 / 1.2);
    Triple signals{};
    for (std::size_t index = 0; index < 3; ++index)
        signals[index] = scene > 0 ? hlgSignal(displayed[index] / peakWhite / std::pow(scene, 0.2)) : 0;
    return signals;
}

Triple hlgLight(const Triple& signals, const Primaries& primaries)
{
    Triple light{hlgSceneLight(signals[0]), hlgSceneLight(signals[1]), hlgSceneLight(signals[2])};
    const double factor = peakWhite * std::pow(std::max(luminance(light, primaries), 1e-12), 0.2);
    for (double& component : light)
        component *= factor;
    return light;
}

/// The light of a signal in the source's primaries; 1 is white, for high dynamic range the reference white.
Triple lightOf(const Triple& signal, const SourceKind& kind)
{
    if (kind.transfer == Transfer::hlg) {
        const Triple light = hlgLight(signal, kind.primaries);
        return {light[0] / referenceWhite, light[1] / referenceWhite, light[2] / referenceWhite};
    }
    const auto each = [&](double component) {
        switch (kind.transfer) {
        case Transfer::gamma22:
            return displayLight(component, 2.2);
        case Transfer::gamma28:
            return displayLight(component, 2.8);
        case Transfer::pq:
            return pqLight(component) / referenceWhite;
        default:
            return displayLight(component);
        }
    };
    return {each(signal[0]), each(signal[1]), each(signal[2])};
}

/// The curve of the export above 0.6 of the reference white: the hyperbola (ax + b) / (x + c) with the value
/// 0.6 and the slope 1 at 0.6, and the value 1 at the peak. The three conditions give a, b and c.
double shoulder(double light)
{
    constexpr double knee = 0.6, peak = peakWhite / referenceWhite;
    if (light <= knee)
        return light;
    // f(x) = a − d / (x + c); f'(knee) = 1 gives d = (knee + c)², f(knee) = knee gives a = 2 knee + c, and
    // f(peak) = 1 then gives c.
    constexpr double c = (peak - 2 * knee * peak + knee * knee) / (peak - 1);
    constexpr double a = 2 * knee + c;
    return a - (knee + c) * (knee + c) / (light + c);
}

std::vector<Triple> hdrPatches(const SourceKind& kind)
{
    std::vector<Triple> signals;
    const auto add = [&](const Triple& light) {
        signals.push_back(kind.transfer == Transfer::hlg
                              ? hlgSignals(light, kind.primaries)
                              : Triple{pqSignal(light[0]), pqSignal(light[1]), pqSignal(light[2])});
    };
    for (std::size_t index = 0; index < 24; ++index) {
        const auto [red, green, blue] = chart[index];
        const Triple light{displayLight(red / 255.0), displayLight(green / 255.0),
                           displayLight(blue / 255.0)};
        Triple wide = rgbOf(xyzOf(light, bt709Primaries), kind.primaries);
        for (double& component : wide)
            component *= referenceWhite;
        add(wide);
    }
    std::ranges::for_each(highlights, add);
    return signals;
}

/// ITU-T H.273, equations for the matrix YCgCo. Chroma has the scale of luma, also in limited range.
Triple ycgcoCodes(const Triple& signal, bool fullRange)
{
    const auto [red, green, blue] = signal;
    const double scale = fullRange ? 255 : 219;
    return {(fullRange ? 0 : 16) + scale * (0.25 * red + 0.5 * green + 0.25 * blue),
            128 + scale * (-0.25 * red + 0.5 * green - 0.25 * blue), 128 + scale * (0.5 * red - 0.5 * blue)};
}

/// The samples of the planes for a colour, in the order of the pixel format.
Triple samplesOf(const Triple& signal, const SourceKind& kind)
{
    const double largest = std::exp2(kind.bits) - 1;
    if (kind.isRgb)
        return {signal[1] * largest, signal[2] * largest, signal[0] * largest};
    if (kind.isYcgco)
        return ycgcoCodes(signal, kind.fullRange);
    return codesOf(signal, kind.luma, kind.fullRange, kind.bits);
}

void appendSample(std::string& bytes, double sample, int bits)
{
    const auto code = static_cast<unsigned>(std::lround(sample));
    bytes += static_cast<char>(code & 0xFFU);
    if (bits > 8)
        bytes += static_cast<char>(code >> 8U);
}

std::string pictureOf(const SourceKind& kind)
{
    std::vector<Triple> samples;
    for (const Triple& patch : patchesOf(kind))
        samples.push_back(samplesOf(patch, kind));
    std::string bytes;
    for (std::size_t plane = 0; plane < (kind.isGrey ? 1 : 3); ++plane) {
        const int width = plane == 0 ? kind.width : kind.width >> kind.chromaShiftX;
        const int height = plane == 0 ? kind.height : kind.height >> kind.chromaShiftY;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const int index = y * patchRows / height * patchColumns + x * patchColumns / width;
                appendSample(bytes, samples[static_cast<std::size_t>(index)][plane], kind.bits);
            }
    }
    return bytes;
}

/// The mean of the middle of a patch in a plane.
double meanOf(const unsigned char* plane, int width, int height, int patch)
{
    const int left = patch % patchColumns * width / patchColumns;
    const int top = patch / patchColumns * height / patchRows;
    const int wide = width / patchColumns, high = height / patchRows;
    double sum = 0;
    int count = 0;
    for (int y = top + high / 4; y < top + high * 3 / 4; ++y)
        for (int x = left + wide / 4; x < left + wide * 3 / 4; ++x, ++count)
            sum += plane[y * width + x];
    return sum / count;
}

} // namespace

std::vector<Triple> patchesOf(const SourceKind& kind)
{
    if (kind.isHdr())
        return hdrPatches(kind);
    std::vector<Triple> patches;
    for (const auto& [red, green, blue] : chart) {
        patches.push_back({red / 255.0, green / 255.0, blue / 255.0});
        if (kind.isGrey)
            patches.back().fill(0.2126 * red / 255 + 0.7152 * green / 255 + 0.0722 * blue / 255);
    }
    return patches;
}

std::filesystem::path patchesFile(const std::filesystem::path& folder, const SourceKind& kind)
{
    const bool isH264 = std::string_view(kind.codec) == "libx264";
    std::filesystem::path file = folder / (std::string(kind.name) + (isH264 ? ".mp4" : ".mkv"));
    if (std::filesystem::exists(file))
        return file;
    const TemporaryDirectory rawFolder;
    const std::string picture = pictureOf(kind);
    const auto raw = rawFolder.write("raw", picture + picture + picture);
    const std::string size = std::to_string(kind.width) + "x" + std::to_string(kind.height);
    std::vector<std::string> arguments{
        "-v", "error", "-y", "-f", "rawvideo",   "-pix_fmt", kind.pixelFormat, "-s",
        size, "-r",    "10", "-i", raw.string(), "-c:v",     kind.codec};
    if (isH264)
        arguments.insert(arguments.end(), {"-qp", "0"});
    if (kind.onlyContainer)
        arguments.insert(arguments.end(),
                         {"-x264-params", "colorprim=undef:transfer=undef:colormatrix=undef:range=auto"});
    if (*kind.tags)
        arguments.insert(arguments.end(), {"-vf", std::string("setparams=") + kind.tags});
    arguments.push_back(file.string());
    const Outcome outcome = run({shimProgram("ffmpeg"), arguments, {}});
    EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
    return file;
}

std::vector<Triple> measuredPatches(const std::filesystem::path& file, int width, int height)
{
    const Outcome outcome = run(
        {shimProgram("ffmpeg"),
         {"-v", "error", "-i", file.string(), "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "yuv420p", "-"},
         {}});
    const auto pixels = static_cast<std::size_t>(width * height);
    if (outcome.output.size() != pixels * 3 / 2)
        return {};
    const auto* const bytes = reinterpret_cast<const unsigned char*>(outcome.output.data());
    std::vector<Triple> patches;
    for (int patch = 0; patch < patchColumns * patchRows; ++patch)
        patches.push_back(signalOf({meanOf(bytes, width, height, patch),
                                    meanOf(bytes + pixels, width / 2, height / 2, patch),
                                    meanOf(bytes + pixels * 5 / 4, width / 2, height / 2, patch)},
                                   bt709Luma));
    return patches;
}

Triple expectedLab(const Triple& signal, const SourceKind& kind)
{
    Triple light = rgbOf(xyzOf(lightOf(signal, kind), kind.primaries), bt709Primaries);
    const double largest = std::max({light[0], light[1], light[2], 1e-9});
    const double factor = kind.isHdr() ? shoulder(largest) / largest : 1;
    for (double& component : light)
        component = std::clamp(component * factor, 0.0, 1.0);
    return labOf(xyzOf(light, bt709Primaries));
}

Triple exportedLab(const Triple& signal)
{
    return labOf(
        xyzOf({displayLight(signal[0]), displayLight(signal[1]), displayLight(signal[2])}, bt709Primaries));
}

} // namespace stackreel::shim
