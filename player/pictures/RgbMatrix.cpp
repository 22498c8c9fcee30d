#include "player/pictures/RgbMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace stackreel
{

namespace
{

/// The upper half of the product, for which processors have an instruction.
gint16 product(gint16 one, gint16 other)
{
    return static_cast<gint16>((static_cast<int>(one) * static_cast<int>(other)) >> 16);
}

gint16 factor(double value, int bits)
{
    return static_cast<gint16>(std::lround(value * (1 << bits)));
}

/// A component from the sum of two numbers of 32nds.
guint16 component(gint16 one, gint16 other)
{
    const auto sum = static_cast<gint16>(static_cast<gint16>(one + other) >> 5);
    return static_cast<guint16>(std::clamp<gint16>(sum, 0, 255));
}

guint8* lineOf(const GstVideoFrame& frame, guint plane, int row)
{
    return static_cast<guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane)) +
           static_cast<std::ptrdiff_t>(row) * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
}

} // namespace

// Luma comes in times 2^7 and is multiplied by 2^14, chroma times 2^8 and by 2^13. The upper half of a
// product then counts 32nds.
RgbMatrix::RgbMatrix(const GstVideoColorimetry& colorimetry)
{
    gdouble red = 0.2126;
    gdouble blue = 0.0722;
    gst_video_color_matrix_get_Kr_Kb(colorimetry.matrix, &red, &blue);
    const gdouble green = 1 - red - blue;
    const bool full = colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255;
    const double chroma = full ? 2 : 2 * 255.0 / 224;
    m_black = full ? 0 : 16;
    m_luma = factor(full ? 1 : 255.0 / 219, 14);
    m_redFromRed = factor((1 - red) * chroma, 13);
    m_greenFromRed = factor(-(1 - red) * red / green * chroma, 13);
    m_greenFromBlue = factor(-(1 - blue) * blue / green * chroma, 13);
    m_blueFromBlue = factor((1 - blue) * chroma, 13);
}

void RgbMatrix::convert(const GstVideoFrame& planar, GstVideoFrame& rgb)
{
    const int width = GST_VIDEO_FRAME_WIDTH(&rgb);
    for (auto* line : {&m_red, &m_green, &m_blue})
        line->resize(static_cast<std::size_t>(width) + 1);
    for (int row = 0; row < GST_VIDEO_FRAME_HEIGHT(&rgb); ++row) {
        if (row % 2 == 0)
            readChroma(lineOf(planar, 1, row / 2), lineOf(planar, 2, row / 2), width);
        convertLine(lineOf(planar, 0, row), reinterpret_cast<guint16*>(lineOf(rgb, 0, row)), width);
    }
}

/// What the chroma of two lines adds to each of their pixels.
void RgbMatrix::readChroma(const guint8* blueDifference, const guint8* redDifference, int width)
{
    gint16* red = m_red.data();
    gint16* green = m_green.data();
    gint16* blue = m_blue.data();
    for (int x = 0; x < (width + 1) / 2; ++x) {
        const auto fromBlue = static_cast<gint16>((blueDifference[x] - 128) * 256);
        const auto fromRed = static_cast<gint16>((redDifference[x] - 128) * 256);
        red[2 * x] = red[2 * x + 1] = product(fromRed, m_redFromRed);
        green[2 * x] = green[2 * x + 1] =
            static_cast<gint16>(product(fromRed, m_greenFromRed) + product(fromBlue, m_greenFromBlue));
        blue[2 * x] = blue[2 * x + 1] = product(fromBlue, m_blueFromBlue);
    }
}

/// Writes two components at a time: everything in 16 bits is what compilers turn into the quickest code.
void RgbMatrix::convertLine(const guint8* luma, guint16* pixels, int width) const
{
    const gint16* red = m_red.data();
    const gint16* green = m_green.data();
    const gint16* blue = m_blue.data();
    const gint16 black = m_black;
    const gint16 lumaFactor = m_luma;
    for (int x = 0; x < width; ++x) {
        const auto level = product(static_cast<gint16>((luma[x] - black) * 128), lumaFactor);
        const auto grey = static_cast<gint16>(level + 16); // for rounding
        pixels[2 * x] =
            GUINT16_TO_LE(static_cast<guint16>(component(grey, blue[x]) | component(grey, green[x]) << 8));
        pixels[2 * x + 1] = GUINT16_TO_LE(static_cast<guint16>(component(grey, red[x]) | 0xFF00));
    }
}

} // namespace stackreel
