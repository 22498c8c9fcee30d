#include "player/pictures/SourceColours.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace stackreel
{

namespace
{

// What ffprobe calls the values of GStreamer that `conversionToBt709` looks at.
constexpr std::array<std::pair<GstVideoTransferFunction, std::string_view>, 5> transferNames{
    {{GST_VIDEO_TRANSFER_BT601, "smpte170m"},
     {GST_VIDEO_TRANSFER_GAMMA22, "gamma22"},
     {GST_VIDEO_TRANSFER_GAMMA28, "gamma28"},
     {GST_VIDEO_TRANSFER_SMPTE2084, "smpte2084"},
     {GST_VIDEO_TRANSFER_ARIB_STD_B67, "arib-std-b67"}}};
constexpr std::array<std::pair<GstVideoColorPrimaries, std::string_view>, 5> primariesNames{
    {{GST_VIDEO_COLOR_PRIMARIES_SMPTE170M, "smpte170m"},
     {GST_VIDEO_COLOR_PRIMARIES_SMPTE240M, "smpte240m"},
     {GST_VIDEO_COLOR_PRIMARIES_BT2020, "bt2020"},
     {GST_VIDEO_COLOR_PRIMARIES_SMPTERP431, "smpte431"},
     {GST_VIDEO_COLOR_PRIMARIES_SMPTEEG432, "smpte432"}}};
constexpr std::array<std::pair<GstVideoColorMatrix, std::string_view>, 5> matrixNames{
    {{GST_VIDEO_COLOR_MATRIX_BT709, "bt709"},
     {GST_VIDEO_COLOR_MATRIX_BT601, "smpte170m"},
     {GST_VIDEO_COLOR_MATRIX_FCC, "fcc"},
     {GST_VIDEO_COLOR_MATRIX_SMPTE240M, "smpte240m"},
     {GST_VIDEO_COLOR_MATRIX_BT2020, "bt2020nc"}}};

// What `ColourConversion::matrix` says, and the value of GStreamer.
constexpr std::array<std::pair<std::string_view, GstVideoColorMatrix>, 5> matrices{
    {{"bt709", GST_VIDEO_COLOR_MATRIX_BT709},
     {"bt601", GST_VIDEO_COLOR_MATRIX_BT601},
     {"fcc", GST_VIDEO_COLOR_MATRIX_FCC},
     {"smpte240m", GST_VIDEO_COLOR_MATRIX_SMPTE240M},
     {"bt2020", GST_VIDEO_COLOR_MATRIX_BT2020}}};

/// The partner of a key in a table, or `otherwise`.
template <typename Key, typename Value, std::size_t size>
Value lookUp(const std::array<std::pair<Key, Value>, size>& table, Key key, Value otherwise)
{
    const auto* const found = std::ranges::find(table, key, &std::pair<Key, Value>::first);
    return found == table.end() ? otherwise : found->second;
}

/// The name of a value. For a known value without a conversion any name serves but one of an unknown value.
template <typename Value, std::size_t size>
std::string nameOf(const std::array<std::pair<Value, std::string_view>, size>& names, Value value)
{
    return value == Value{} ? "" : std::string(lookUp(names, value, std::string_view("other")));
}

GstVideoColorimetry statedColorimetry(const GstCaps* caps)
{
    GstVideoColorimetry stated = {};
    const gchar* text = gst_structure_get_string(gst_caps_get_structure(caps, 0), "colorimetry");
    if (!text || !gst_video_colorimetry_from_string(&stated, text))
        return {};
    return stated;
}

std::string rangeOf(GstVideoColorRange range)
{
    if (range == GST_VIDEO_COLOR_RANGE_UNKNOWN)
        return "";
    return range == GST_VIDEO_COLOR_RANGE_0_255 ? "pc" : "tv";
}

std::string formatOf(const GstVideoInfo& info)
{
    if (GST_VIDEO_INFO_IS_RGB(&info))
        return "rgb";
    return GST_VIDEO_INFO_IS_GRAY(&info) ? "gray" : "yuv";
}

} // namespace

SourceColours sourceColours(const GstCaps* caps, const GstVideoInfo& info)
{
    const GstVideoColorimetry stated = statedColorimetry(caps);
    const SourceVideo source{.width = GST_VIDEO_INFO_WIDTH(&info),
                             .height = GST_VIDEO_INFO_HEIGHT(&info),
                             .pixelFormat = formatOf(info),
                             .range = rangeOf(stated.range),
                             .matrix = nameOf(matrixNames, stated.matrix),
                             .transfer = nameOf(transferNames, stated.transfer),
                             .primaries = nameOf(primariesNames, stated.primaries),
                             .fieldOrder = ""};
    ColourConversion conversion = conversionToBt709(source);
    SourceColours colours{.colorimetry = info.colorimetry, .tables = std::move(conversion.tables)};
    const GstVideoColorMatrix matrix =
        lookUp(matrices, std::string_view(conversion.matrix), GST_VIDEO_COLOR_MATRIX_UNKNOWN);
    const auto range = conversion.fullRange ? GST_VIDEO_COLOR_RANGE_0_255 : GST_VIDEO_COLOR_RANGE_16_235;
    if (matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN)
        colours.colorimetry = {range, matrix, stated.transfer, stated.primaries};
    return colours;
}

} // namespace stackreel
