#include "player/pictures/ColourMapper.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>

namespace stackreel
{

namespace
{

/// The codes of R'G'B' in BT.709 with limited range, in 8 bits (ITU-R BT.709, part 3).
Rgb codesOf(const Rgb& rgb)
{
    const double luma = 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
    return {16 + 219 * luma, 128 + 224 * (rgb[2] - luma) / 1.8556, 128 + 224 * (rgb[0] - luma) / 1.5748};
}

Rgb converted(Rgb rgb, const std::vector<std::string>& tables)
{
    for (const std::string& name : tables) {
        const auto found = std::ranges::find(colourTables(), name, &ColourTable::name);
        if (found != colourTables().end())
            rgb = found->convert(rgb);
    }
    return rgb;
}

/// The cube for the tables, which is made once and shared by all readers. The codes are a linear function of
/// R'G'B', so it makes no difference that they are interpolated in place of R'G'B'.
std::shared_ptr<const ColourCube> cubeFor(const std::vector<std::string>& tables)
{
    static std::mutex mutex;
    static std::map<std::vector<std::string>, std::shared_ptr<const ColourCube>> cubes;
    const std::lock_guard lock(mutex);
    std::shared_ptr<const ColourCube>& cube = cubes[tables];
    if (!cube)
        cube = std::make_shared<ColourCube>([&](const Rgb& rgb) { return codesOf(converted(rgb, tables)); });
    return cube;
}

/// The nearest integer. Codes are positive, and the cast removes the fraction.
guint8 rounded(float code)
{
    const float above = code + 0.5F;
    return static_cast<guint8>(above);
}

} // namespace

ColourMapper::ColourMapper(const GstVideoColorimetry& colorimetry, int bits,
                           const std::vector<std::string>& tables)
    : m_cube(cubeFor(tables))
{
    gdouble red = 0.2126;
    gdouble blue = 0.0722;
    gst_video_color_matrix_get_Kr_Kb(colorimetry.matrix, &red, &blue);
    const gdouble green = 1 - red - blue;
    // GStreamer fills the lower bits with the upper ones. A code of 8 bits becomes this number.
    const double code = 65535 / (std::exp2(bits) - 1) * std::exp2(bits - 8);
    const bool full = colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255;
    const double luma = ColourCube::largest / (full ? 65535 : 219 * code);
    const double chroma = 2 * ColourCube::largest / (full ? 65535 : 224 * code);
    const auto colour = [](double r, double g, double b) {
        return FourFloats{static_cast<float>(r), static_cast<float>(g), static_cast<float>(b), 0};
    };
    m_luma = colour(luma, luma, luma);
    m_blueDifference = colour(0, -(1 - blue) * blue / green * chroma, (1 - blue) * chroma);
    m_redDifference = colour((1 - red) * chroma, -(1 - red) * red / green * chroma, 0);
    m_offset = (m_blueDifference + m_redDifference) * static_cast<float>(-128 * code) -
               m_luma * static_cast<float>(full ? 0 : 16 * code);
}

FourFloats ColourMapper::convert(const guint16* pixel) const
{
    return m_cube->at(m_offset + m_luma * static_cast<float>(pixel[1]) +
                      m_blueDifference * static_cast<float>(pixel[2]) +
                      m_redDifference * static_cast<float>(pixel[3]));
}

void ColourMapper::map(const GstVideoFrame& from, GstVideoFrame& to) const
{
    const auto lineOf = [](const GstVideoFrame& frame, guint plane, int row) {
        return static_cast<guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane)) +
               static_cast<std::ptrdiff_t>(row) * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
    };
    for (int y = 0; y + 1 < GST_VIDEO_FRAME_HEIGHT(&to); y += 2) {
        const auto* upper = reinterpret_cast<const guint16*>(lineOf(from, 0, y));
        const auto* lower = reinterpret_cast<const guint16*>(lineOf(from, 0, y + 1));
        guint8* upperLuma = lineOf(to, 0, y);
        guint8* lowerLuma = lineOf(to, 0, y + 1);
        guint8* blueDifference = lineOf(to, 1, y / 2);
        guint8* redDifference = lineOf(to, 2, y / 2);
        for (int x = 0; x + 1 < GST_VIDEO_FRAME_WIDTH(&to); x += 2) {
            const FourFloats pixels[] = {convert(upper), convert(upper + 4), convert(lower),
                                         convert(lower + 4)};
            *upperLuma++ = rounded(pixels[0][0]);
            *upperLuma++ = rounded(pixels[1][0]);
            *lowerLuma++ = rounded(pixels[2][0]);
            *lowerLuma++ = rounded(pixels[3][0]);
            const FourFloats mean = (pixels[0] + pixels[1] + pixels[2] + pixels[3]) * 0.25F;
            *blueDifference++ = rounded(mean[1]);
            *redDifference++ = rounded(mean[2]);
            upper += 8;
            lower += 8;
        }
    }
}

} // namespace stackreel
