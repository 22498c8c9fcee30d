#pragma once

#include <gst/video/video.h>

#include <vector>

namespace stackreel
{

/// Converts I420 to 32-bit R'G'B', blue first. GStreamer's own short way from one to the other is as quick,
/// but with limited range its result is 2 to 5 of 255 too dark (1.22). One thread.
class RgbMatrix
{
public:
    RgbMatrix() = default;
    /// For pictures with these colours.
    explicit RgbMatrix(const GstVideoColorimetry& colorimetry);

    /// Both frames are mapped and have the same even size.
    void convert(const GstVideoFrame& planar, GstVideoFrame& rgb);

private:
    void readChroma(const guint8* blueDifference, const guint8* redDifference, int width);
    void convertLine(const guint8* luma, guint16* pixels, int width) const;

    // Factors of 16 bits, and what the chroma of a line adds to the components, in 32nds.
    gint16 m_black = 0;
    gint16 m_luma = 0;
    gint16 m_redFromRed = 0;
    gint16 m_greenFromRed = 0;
    gint16 m_greenFromBlue = 0;
    gint16 m_blueFromBlue = 0;
    std::vector<gint16> m_red;
    std::vector<gint16> m_green;
    std::vector<gint16> m_blue;
};

} // namespace stackreel
