#include "model/SourceLuma.h"

#include <system_error>

namespace stackreel
{

namespace
{

std::string withBackslashes(std::string_view text, std::string_view special)
{
    std::string result;
    for (const char character : text) {
        if (special.find(character) != std::string_view::npos)
            result += '\\';
        result += character;
    }
    return result;
}

/// A value in a filter graph, which FFmpeg parses twice (ffmpeg-filters, "Notes on filtergraph escaping").
std::string escaped(const std::string& value)
{
    return withBackslashes(withBackslashes(value, "\\':"), "\\'[],;");
}

/// The colour table as a filter. Without it, the curve whose points are signals of grey in the source and in
/// the export: they follow from the light of PQ and HLG (ITU-R BT.2100) and the curve in docs/colour.md.
std::string tableOr(const std::filesystem::path& table, const std::string& points)
{
    std::error_code error;
    if (std::filesystem::exists(table, error))
        return ",lut3d=file=" + escaped(table.string());
    return ",curves=all='" + points + "'";
}

std::string standardRange(std::string_view transfer, const std::filesystem::path& tables)
{
    if (transfer.starts_with("smpte2084"))
        return tableOr(tables / "pq.cube",
                       "0/0 0.1/0.07 0.2/0.16 0.3/0.29 0.4/0.47 0.5/0.72 0.6/0.94 0.7/0.99 0.76/1 1/1");
    if (transfer.starts_with("arib-std-b67"))
        return tableOr(tables / "hlg.cube",
                       "0/0 0.2/0.22 0.4/0.45 0.5/0.56 0.6/0.7 0.7/0.87 0.76/0.92 0.8/0.95 0.9/0.98 1/1");
    return "";
}

} // namespace

std::string lumaFilters(std::string_view transfer, const std::filesystem::path& tables)
{
    // FFmpeg takes the matrix of the source from its frames, and BT.601 where they have none.
    return ",format=gbrp" + standardRange(transfer, tables) +
           ",scale=out_color_matrix=bt709:out_range=tv,format=yuv444p";
}

} // namespace stackreel
