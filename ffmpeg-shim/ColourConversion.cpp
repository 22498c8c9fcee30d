#include "ffmpeg-shim/ColourConversion.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace stackreel::shim
{

namespace
{

using Names = std::pair<std::string_view, std::string_view>;

// What ffprobe calls a matrix (ITU-T H.273, table 4), and what the `scale` filter calls it.
constexpr std::array<Names, 7> matrices{{{"bt709", "bt709"},
                                         {"bt470bg", "bt601"},
                                         {"smpte170m", "bt601"},
                                         {"fcc", "fcc"},
                                         {"smpte240m", "smpte240m"},
                                         {"bt2020nc", "bt2020"},
                                         {"bt2020c", "bt2020"}}};

// What ffprobe calls transfer characteristics (H.273, table 3), and the table that changes them. The others
// for standard dynamic range stay as they are: BT.709, BT.601 and BT.2020 have one function, and players
// show sRGB and BT.709 in the same way.
constexpr std::array<Names, 6> transferTables{{{"bt470m", "gamma22"},
                                               {"gamma22", "gamma22"},
                                               {"bt470bg", "gamma28"},
                                               {"gamma28", "gamma28"},
                                               {"smpte2084", "pq"},
                                               {"arib-std-b67", "hlg"}}};

// What ffprobe calls primaries (H.273, table 2), and the table that changes them to those of BT.709. Those of
// BT.601 for 625 lines ("bt470bg") stay: they differ by a ΔE (CIEDE2000) of at most 1.5. Those for 525 lines
// differ by up to 3.
constexpr std::array<Names, 5> primariesTables{{{"smpte170m", "smpte170m"},
                                                {"smpte240m", "smpte170m"},
                                                {"bt2020", "bt2020"},
                                                {"smpte431", "p3"},
                                                {"smpte432", "p3"}}};

template <std::size_t size>
std::string_view lookUp(const std::array<Names, size>& table, std::string_view name)
{
    const auto* const found = std::ranges::find(table, name, &Names::first);
    return found == table.end() ? std::string_view() : found->second;
}

bool isUnknown(const std::string& text)
{
    return text.empty() || text == "unknown" || text == "reserved" || text == "unspecified";
}

bool isRgb(std::string_view format)
{
    const auto contains = [&](std::string_view part) { return format.find(part) != std::string_view::npos; };
    return contains("rgb") || contains("bgr") || contains("gbr") || contains("bayer") || format == "pal8";
}

bool isGrey(std::string_view format)
{
    return format.starts_with("gray") || format.starts_with("ya") || format.starts_with("mono");
}

bool isHighDefinition(const SourceVideo& source)
{
    return source.width >= 1280 || source.height > 576;
}

std::string matrixOf(const SourceVideo& source, bool hdr)
{
    const std::string_view known = lookUp(matrices, source.matrix);
    if (!known.empty())
        return std::string(known);
    if (hdr || source.primaries == "bt2020")
        return "bt2020";
    return isHighDefinition(source) ? "bt709" : "bt601";
}

std::string primariesOf(const SourceVideo& source)
{
    if (!isUnknown(source.primaries))
        return source.primaries;
    const bool of525Lines = source.height == 480 || source.height == 486 || source.height == 488;
    const bool untagged = isUnknown(source.matrix) && isUnknown(source.transfer);
    return untagged && of525Lines && !isHighDefinition(source) && !isRgb(source.pixelFormat) ? "smpte170m"
                                                                                             : "bt709";
}

std::vector<std::string> tablesFor(const SourceVideo& source)
{
    std::vector<std::string> tables;
    const auto add = [&](std::string_view table) {
        if (!table.empty())
            tables.emplace_back(table);
    };
    const std::string_view transfer = lookUp(transferTables, source.transfer);
    add(transfer);
    // The tables for high dynamic range change the primaries of BT.2020 as well.
    if (transfer != "pq" && transfer != "hlg")
        add(lookUp(primariesTables, primariesOf(source)));
    return tables;
}

} // namespace

bool ColourConversion::isHdr() const
{
    return std::ranges::any_of(tables, [](const auto& table) { return table == "pq" || table == "hlg"; });
}

ColourConversion conversionToBt709(const SourceVideo& source)
{
    ColourConversion conversion;
    conversion.tables = tablesFor(source);
    conversion.isRgb = isRgb(source.pixelFormat);
    conversion.isGrey = isGrey(source.pixelFormat);
    if (!conversion.isRgb && !conversion.isGrey)
        conversion.matrix = matrixOf(source, conversion.isHdr());
    conversion.fullRange = !conversion.isGrey && !conversion.isRgb &&
                           (source.range == "pc" || source.pixelFormat.starts_with("yuvj"));
    static constexpr std::array<std::string_view, 4> interlaced{"tt", "bb", "tb", "bt"};
    conversion.isInterlaced = std::ranges::find(interlaced, source.fieldOrder) != interlaced.end();
    return conversion;
}

} // namespace stackreel::shim
