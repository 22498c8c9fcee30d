#pragma once

#include "colour/ColourCube.h"

#include <gst/video/video.h>

#include <memory>
#include <string>
#include <vector>

namespace stackreel
{

/// Applies colour tables to pictures: the same tables as those of an export, at the same points, so that the
/// preview shows what is exported. One thread.
class ColourMapper
{
public:
    /// The pictures that it takes (AYUV64, 16 bits per component: with eight, dark steps of high dynamic
    /// range would show) and makes (I420, BT.709, limited range), of any even size.
    static constexpr GstVideoFormat takenFormat = GST_VIDEO_FORMAT_AYUV64;
    static constexpr GstVideoFormat madeFormat = GST_VIDEO_FORMAT_I420;

    /// For pictures with the matrix and the range in `colorimetry`, whose components were made from `bits`
    /// bits each. `tables` are applied one after the other, see `ColourConversion`.
    ColourMapper(const GstVideoColorimetry& colorimetry, int bits, const std::vector<std::string>& tables);

    /// Both frames are mapped and have the same size.
    void map(const GstVideoFrame& from, GstVideoFrame& to) const;

private:
    FourFloats convert(const guint16* pixel) const;

    std::shared_ptr<const ColourCube> m_cube; ///< from R'G'B' to codes of 8 bits
    // From the numbers of a pixel to R'G'B', counted in points of the cube.
    FourFloats m_offset = {};
    FourFloats m_luma = {};
    FourFloats m_blueDifference = {};
    FourFloats m_redDifference = {};
};

} // namespace stackreel
