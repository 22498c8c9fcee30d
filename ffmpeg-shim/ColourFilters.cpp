#include "ffmpeg-shim/ColourFilters.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace stackreel::shim
{

namespace
{

// Without these flags swscale rounds a grey of 52 to 49, 52, 49 (ΔE 3) where it converts between RGB and
// Y'CbCr, and takes the mean of two pixels' chroma before the conversion.
const std::string exactFlags = "accurate_rnd+full_chroma_inp+full_chroma_int";

const std::string tags = "setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709";
const std::string toBt709 = "out_color_matrix=bt709:out_range=tv";

// Each decoded picture is marked as interlaced or not. Files can have both; only the interlaced ones change.
const std::string bwdif = "bwdif=mode=send_frame:parity=auto:deint=interlaced";

const std::regex& halfScale()
{
    static const std::regex pattern("(scale=[0-9]+:[0-9]+):flags=bicubic(?=[,;\\[])");
    return pattern;
}

// The scale that `withEvenSides` writes into the filters of a preview copy.
const std::regex& copyScale()
{
    static const std::regex pattern(
        "^(scale=[0-9]+:'max\\(2,2\\*round\\([0-9]+\\*ih/iw/2\\)\\)')(?=,format=yuv420p$)");
    return pattern;
}

const std::regex& graphStart()
{
    static const std::regex pattern("^\\[0:v:0\\](?=split=2\\[)");
    return pattern;
}

const std::regex& graphEnd()
{
    static const std::regex pattern("(format=yuv420p)(?=\\[[A-Za-z]+\\]$)");
    return pattern;
}

// FFmpeg turns the pictures for display before the first filter, and `bwdif` needs the lines of the fields as
// they were. So the pictures are turned back before it, and turned again behind it.
std::string deinterlaced(int rotation)
{
    const std::string clockwise = "transpose=clock", counterclockwise = "transpose=cclock";
    switch (rotation) {
    case 90:
    case -270:
        return clockwise + "," + bwdif + "," + counterclockwise;
    case -90:
    case 270:
        return counterclockwise + "," + bwdif + "," + clockwise;
    case 180:
    case -180:
        return "vflip," + bwdif + ",vflip";
    default:
        return bwdif;
    }
}

/// What the filters `colorspace` and `setparams` call the matrix.
std::string spaceName(const std::string& matrix)
{
    return matrix == "bt601" ? "smpte170m" : matrix == "bt2020" ? "bt2020nc" : matrix;
}

// `colorspace` converts matrix and range much faster than swscale, which goes through RGB.
// Equal primaries and transfer characteristics keep it from converting those as well.
std::string toBt709From(const std::string& matrix, bool fullRange)
{
    return "colorspace=ispace=" + spaceName(matrix) + ":irange=" + (fullRange ? "pc" : "tv") +
           ":iprimaries=bt709:itrc=bt709:space=bt709:range=tv:primaries=bt709:trc=bt709";
}

/// The filters before the picture is split or scaled, each with a comma behind it. From FFmpeg 7 on, `scale`
/// refuses pictures with the tag of a matrix that it does not know.
std::string atTheStart(const ColourConversion& conversion)
{
    std::string filters;
    if (conversion.isInterlaced)
        filters += deinterlaced(conversion.rotation) + ",";
    if (conversion.matrix == "ycgco")
        return filters + "setparams=colorspace=bt709,scale=in_range=" + (conversion.fullRange ? "pc" : "tv") +
               ":out_range=tv,format=yuv444p10," + toBt709From("ycgco", false) + ",";
    if (std::ranges::count(conversion.unconverted, "matrix") > 0)
        filters += "setparams=colorspace=" + spaceName(conversion.matrix) + ",";
    return filters;
}

/// What is left to do behind those filters.
ColourConversion afterTheStart(ColourConversion conversion)
{
    if (conversion.matrix == "ycgco") {
        conversion.matrix = "bt709";
        conversion.fullRange = false;
    }
    return conversion;
}

std::string fromSource(const ColourConversion& conversion)
{
    if (conversion.matrix.empty())
        return "";
    return ":in_color_matrix=" + conversion.matrix + (conversion.fullRange ? ":in_range=pc" : ":in_range=tv");
}

// The table is applied to ten bits per component: with eight, dark steps of high dynamic range would show.
std::string byTables(const ColourConversion& conversion, const ColourTables& tables)
{
    std::string filters = ",format=gbrp10";
    for (const std::string& table : conversion.tables)
        filters +=
            ",lut3d=file=" + filterValue(tables.folder + "/" + table + ".cube") + ":interp=tetrahedral";
    return filters + ",scale=flags=" + exactFlags + ":" + toBt709;
}

/// The colours of high dynamic range as tags: zimg fails if one of them is unknown ("no path between
/// colorspaces").
std::string hdrTags(const ColourConversion& conversion)
{
    const std::string& table = conversion.tables.front();
    const std::string primaries = table.ends_with("-p3")      ? "smpte432"
                                  : table.ends_with("-bt709") ? "bt709"
                                                              : "bt2020";
    const std::string matrix = conversion.matrix.empty() ? "bt709" : spaceName(conversion.matrix);
    const bool fullRange = conversion.fullRange && !conversion.isGrey;
    return std::string("setparams=range=") + (fullRange ? "pc" : "tv") + ":color_primaries=" + primaries +
           ":color_trc=" + (table.starts_with("pq") ? "smpte2084" : "arib-std-b67") + ":colorspace=" + matrix;
}

// zimg shows the reference white of 203 cd/m² (ITU-R BT.2408) as 1 and the highlights above it by the curve
// of `ColourTable.h`. It needs even heights for 4:2:0, so the halves stay 4:4:4 until they are stacked.
std::string byZscale(const ColourConversion& conversion)
{
    return ",format=yuv444p10," + hdrTags(conversion) +
           ",zscale=t=linear:npl=203,format=gbrpf32le,zscale=p=bt709,"
           "tonemap=mobius:param=0.6:desat=0:peak=4.926,zscale=t=bt709:m=bt709:r=tv,format=yuv444p";
}

bool usesTables(const ColourConversion& conversion, const ColourTables& tables)
{
    return tables.filter == TableFilter::lut3d && convertsTables(conversion, tables.filter);
}

bool usesZscale(const ColourConversion& conversion, const ColourTables& tables)
{
    return tables.filter == TableFilter::zscale && convertsTables(conversion, tables.filter);
}

/// Whether the samples stay as they are although swscale would change their range. It takes grey as full
/// range, from FFmpeg 7 on whatever the tags say. The range of the others is converted by `atTheEnd`.
bool keepsSamples(const ColourConversion& conversion)
{
    return conversion.isGrey ? !conversion.fullRange : conversion.fullRange;
}

/// The options and filters behind the size of a `scale` filter; empty if none are needed.
std::string conversionFilters(const ColourConversion& conversion, const ColourTables& tables)
{
    const std::string exact = ":flags=bicubic+" + exactFlags;
    const std::string samples = keepsSamples(conversion) ? ":in_range=pc:out_range=pc" : "";
    if (usesTables(conversion, tables))
        return exact + fromSource(conversion) + byTables(conversion, tables);
    const std::string zscale = usesZscale(conversion, tables) ? byZscale(conversion) : "";
    if (conversion.isRgb)
        return exact + ":" + toBt709 + zscale;
    return samples.empty() && zscale.empty() ? "" : ":flags=bicubic" + samples + zscale;
}

std::string atTheEnd(const ColourConversion& conversion, const ColourTables& tables)
{
    const bool done =
        usesTables(conversion, tables) || usesZscale(conversion, tables) || conversion.matrix.empty();
    if (done || (conversion.matrix == "bt709" && !conversion.fullRange))
        return tags;
    return toBt709From(conversion.matrix, conversion.fullRange) + "," + tags;
}

/// Replaces each match by its first group and `text`, in which no character is special.
std::string replaced(const std::string& filters, const std::regex& pattern, const std::string& text)
{
    std::string result;
    auto rest = filters.begin();
    for (std::sregex_iterator match(filters.begin(), filters.end(), pattern), none; match != none; ++match) {
        result.append(rest, (*match)[0].first);
        result += (match->size() > 1 ? (*match)[1].str() : match->str()) + text;
        rest = (*match)[0].second;
    }
    return result.append(rest, filters.end());
}

std::string convertedGraph(const std::string& graph, const std::string& start, const std::string& filters,
                           const std::string& end)
{
    std::string result = filters.empty() ? graph : replaced(graph, halfScale(), filters);
    result = replaced(result, graphEnd(), "," + end);
    return replaced(result, graphStart(), start);
}

std::string convertedCopy(const std::string& chain, const std::string& start, const std::string& filters,
                          const std::string& end)
{
    return start + (filters.empty() ? chain : replaced(chain, copyScale(), filters)) + "," + end;
}

bool isExportGraph(const std::string& graph)
{
    const std::sregex_iterator halves(graph.begin(), graph.end(), halfScale());
    return std::distance(halves, std::sregex_iterator()) == 2 && std::regex_search(graph, graphStart()) &&
           std::regex_search(graph, graphEnd());
}

/// The value of an option; the end if the option is missing or there several times.
Arguments::iterator valueOf(Arguments& arguments, const std::string& option)
{
    const auto found = std::ranges::find(arguments, option);
    if (found == arguments.end() || std::find(std::next(found), arguments.end(), option) != arguments.end())
        return arguments.end();
    return std::next(found);
}

} // namespace

TableFilter preferredTableFilter(std::string_view listing, bool haveTables)
{
    const auto has = [&](const std::string& name) {
        return listing.find(" " + name + " ") != std::string_view::npos;
    };
    if (haveTables && has("lut3d"))
        return TableFilter::lut3d;
    return has("zscale") && has("tonemap") ? TableFilter::zscale : TableFilter::none;
}

bool convertsTables(const ColourConversion& conversion, TableFilter filter)
{
    return filter == TableFilter::lut3d ? !conversion.tables.empty()
                                        : filter == TableFilter::zscale && conversion.isHdr();
}

std::string onlyInput(const Arguments& arguments)
{
    Arguments copy = arguments;
    const auto input = valueOf(copy, "-i");
    return input == copy.end() ? "" : *input;
}

bool canConvertColours(const Arguments& arguments)
{
    Arguments copy = arguments;
    const auto graph = valueOf(copy, "-filter_complex");
    const auto chain = valueOf(copy, "-vf");
    if (onlyInput(arguments).empty() || (graph == copy.end()) == (chain == copy.end()))
        return false;
    return graph != copy.end() ? isExportGraph(*graph) : std::regex_search(*chain, copyScale());
}

Arguments withBt709(Arguments arguments, const ColourConversion& conversion, const ColourTables& tables)
{
    if (!canConvertColours(arguments))
        return arguments;
    const std::string start = atTheStart(conversion);
    const ColourConversion rest = afterTheStart(conversion);
    const std::string filters = conversionFilters(rest, tables);
    const std::string end = atTheEnd(rest, tables);
    const auto graph = valueOf(arguments, "-filter_complex");
    if (graph != arguments.end()) {
        *graph = convertedGraph(*graph, start, filters, end);
        return arguments;
    }
    const auto chain = valueOf(arguments, "-vf");
    *chain = convertedCopy(*chain, start, filters, end);
    return arguments;
}

// FFmpeg reads the graph and then the options of each filter, and both take a backslash and quotes as marks.
std::string filterValue(const std::string& path)
{
    const auto escaped = [](const std::string& text, std::string_view special) {
        std::string result;
        for (const char character : text) {
            if (special.find(character) != std::string_view::npos)
                result += '\\';
            result += character;
        }
        return result;
    };
    return escaped(escaped(path, "\\':"), "\\'[],;");
}

} // namespace stackreel::shim
