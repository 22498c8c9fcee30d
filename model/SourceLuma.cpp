#include "model/SourceLuma.h"

namespace stackreel
{

namespace
{

/// The curve that gives high dynamic range about the brightness of the export. The points are signals of grey
/// in the source and in the export. They follow from the light of PQ and HLG (ITU-R BT.2100) and the curve in
/// docs/colour.md.
std::string brightness(std::string_view transfer)
{
    const auto curve = [](const std::string& points) { return ",curves=all='" + points + "'"; };
    if (transfer.starts_with("smpte2084"))
        return curve("0/0 0.1/0.07 0.2/0.16 0.3/0.29 0.4/0.47 0.5/0.72 0.6/0.94 0.7/0.99 0.76/1 1/1");
    if (transfer.starts_with("arib-std-b67"))
        return curve("0/0 0.2/0.22 0.4/0.45 0.5/0.56 0.6/0.7 0.7/0.87 0.76/0.92 0.8/0.95 0.9/0.98 1/1");
    return "";
}

} // namespace

std::string lumaFilters(std::string_view transfer)
{
    // FFmpeg takes the matrix of the source from its frames, and BT.601 where they have none.
    return ",format=gbrp" + brightness(transfer) +
           ",scale=out_color_matrix=bt709:out_range=tv,format=yuv444p";
}

} // namespace stackreel
