#include "colour/ColourConversion.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace stackreel
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
                                         {"ycgco", "ycgco"},
                                         {"bt2020nc", "bt2020"}}};

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
// BT.601 for 625 lines ("bt470bg") stay: they differ by a ΔE (CIEDE2000) of at most 1.4. Those for 525 lines
// differ by up to 2.3.
constexpr std::array<Names, 5> primariesTables{{{"smpte170m", "smpte170m"},
                                                {"smpte240m", "smpte170m"},
                                                {"bt2020", "bt2020"},
                                                {"smpte431", "p3"},
                                                {"smpte432", "p3"}}};

// Transfer characteristics and primaries that differ from those of BT.709 and have no table.
constexpr std::array<std::string_view, 4> otherTransfers{"linear", "log100", "log316", "smpte428"};
constexpr std::array<std::string_view, 5> otherPrimaries{"bt470m", "film", "smpte428", "jedec-p22",
                                                         "ebu3213"};

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

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

bool isHdrTable(std::string_view table)
{
    return table.starts_with("pq") || table.starts_with("hlg");
}

bool isHdr(const SourceVideo& source)
{
    return isHdrTable(lookUp(transferTables, source.transfer));
}

bool hasOtherMatrix(const SourceVideo& source)
{
    return !isUnknown(source.matrix) && lookUp(matrices, source.matrix).empty();
}

std::string matrixOf(const SourceVideo& source)
{
    const std::string_view known = lookUp(matrices, source.matrix);
    if (!known.empty())
        return std::string(known);
    if (isHdr(source) || source.primaries == "bt2020")
        return "bt2020";
    return isHighDefinition(source) || hasOtherMatrix(source) ? "bt709" : "bt601";
}

/// Whether pictures whose primaries are not stated have those of BT.601 for 525 lines.
bool isOf525Lines(const SourceVideo& source)
{
    const auto mayBe = [](const std::string& text) { return isUnknown(text) || text == "smpte170m"; };
    const bool lines = source.height == 480 || source.height == 486 || source.height == 488;
    return lines && !isHighDefinition(source) && !isRgb(source.pixelFormat) && mayBe(source.matrix) &&
           mayBe(source.transfer);
}

std::string primariesOf(const SourceVideo& source)
{
    if (!isUnknown(source.primaries))
        return source.primaries;
    if (isHdr(source) || lookUp(matrices, source.matrix) == "bt2020")
        return "bt2020";
    return isOf525Lines(source) ? "smpte170m" : "bt709";
}

/// The table for high dynamic range with these primaries.
std::string hdrTable(std::string_view transfer, std::string_view primaries)
{
    const std::string_view table = lookUp(primariesTables, primaries);
    const std::string_view suffix = table == "bt2020" ? "" : table == "p3" ? "-p3" : "-bt709";
    return std::string(transfer) + std::string(suffix);
}

std::vector<std::string> tablesFor(const SourceVideo& source)
{
    std::vector<std::string> tables;
    const std::string_view transfer = lookUp(transferTables, source.transfer);
    const std::string primaries = primariesOf(source);
    if (isHdrTable(transfer))
        return {hdrTable(transfer, primaries)};
    for (const std::string_view table : {transfer, lookUp(primariesTables, primaries)})
        if (!table.empty())
            tables.emplace_back(table);
    return tables;
}

std::vector<std::string> unconvertedOf(const SourceVideo& source)
{
    std::vector<std::string> names;
    if (hasOtherMatrix(source) && !isRgb(source.pixelFormat) && !isGrey(source.pixelFormat))
        names.emplace_back("matrix");
    if (isOneOf(otherTransfers, source.transfer))
        names.emplace_back("gamma");
    if (isOneOf(otherPrimaries, source.primaries))
        names.emplace_back("primaries");
    return names;
}

bool hasFullRange(const SourceVideo& source, const ColourConversion& conversion)
{
    if (conversion.isGrey)
        return source.range != "tv";
    return !conversion.isRgb && (source.range == "pc" || source.pixelFormat.starts_with("yuvj"));
}

} // namespace

bool ColourConversion::isHdr() const
{
    return std::ranges::any_of(tables, isHdrTable);
}

ColourConversion conversionToBt709(const SourceVideo& source)
{
    ColourConversion conversion;
    conversion.tables = tablesFor(source);
    conversion.isRgb = isRgb(source.pixelFormat);
    conversion.isGrey = isGrey(source.pixelFormat);
    if (!conversion.isRgb && !conversion.isGrey)
        conversion.matrix = matrixOf(source);
    conversion.unconverted = unconvertedOf(source);
    conversion.fullRange = hasFullRange(source, conversion);
    static constexpr std::array<std::string_view, 4> interlaced{"tt", "bb", "tb", "bt"};
    // ffprobe does not know the field order of DV, whose pictures are always interlaced.
    conversion.isInterlaced = isOneOf(interlaced, source.fieldOrder) || source.codec == "dvvideo";
    conversion.rotation = source.rotation;
    return conversion;
}

} // namespace stackreel
