#include "ffmpeg-shim/ColourChanges.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace stackreel::shim
{

namespace
{

using Reason = std::pair<std::string_view, std::string_view>;

// Why each matrix and each table is converted.
constexpr std::array<Reason, 5> matrixReasons{{{"bt601", "the source has that of BT.601"},
                                               {"fcc", "the source has that of FCC"},
                                               {"smpte240m", "the source has that of SMPTE 240M"},
                                               {"bt2020", "the source has that of BT.2020"},
                                               {"ycgco", "the source has YCgCo"}}};
constexpr std::array<Reason, 2> gammaReasons{{{"gamma22", "the source is for displays of gamma 2.2"},
                                              {"gamma28", "the source is for displays of gamma 2.8"}}};
constexpr std::array<Reason, 7> primariesReasons{
    {{"smpte170m", "the source has those of BT.601 for 525 lines"},
     {"bt2020", "the source has those of BT.2020"},
     {"p3", "the source has those of P3"},
     {"pq", "the source has those of BT.2020"},
     {"hlg", "the source has those of BT.2020"},
     {"pq-p3", "the source has those of P3"},
     {"hlg-p3", "the source has those of P3"}}};

/// The reason for a name; empty if it has none.
template <std::size_t size>
std::string_view reasonFor(const std::array<Reason, size>& reasons, std::string_view name)
{
    const auto* const found = std::ranges::find(reasons, name, &Reason::first);
    return found == reasons.end() ? std::string_view() : found->second;
}

std::vector<Change> tableChanges(std::string_view table)
{
    std::vector<Change> changes;
    if (table.starts_with("pq"))
        changes.push_back({"dynamic-range", "standard", "the source is PQ"});
    if (table.starts_with("hlg"))
        changes.push_back({"dynamic-range", "standard", "the source is HLG"});
    if (const auto reason = reasonFor(gammaReasons, table); !reason.empty())
        changes.push_back({"gamma", "bt709", reason});
    if (const auto reason = reasonFor(primariesReasons, table); !reason.empty())
        changes.push_back({"primaries", "bt709", reason});
    return changes;
}

/// The change for a table that cannot be applied.
Change withoutTable(std::string_view table)
{
    if (table.starts_with("pq") || table.starts_with("hlg"))
        return {"dynamic-range", unconverted,
                "FFmpeg's filter lut3d or its tables are missing, and so are zscale and tonemap"};
    return {table.starts_with("gamma") ? "gamma" : "primaries", unconverted,
            "FFmpeg's filter lut3d or its tables are missing"};
}

/// The change for a name in `ColourConversion::unconverted`.
Change withoutConversion(std::string_view name)
{
    if (name == "primaries")
        return {"primaries", unconverted, "nothing here converts them to those of BT.709"};
    return {name == "matrix" ? "matrix" : "gamma", unconverted, "nothing here converts it to that of BT.709"};
}

/// The changes of matrix and range.
std::vector<Change> sampleChanges(const ColourConversion& conversion)
{
    std::vector<Change> changes;
    const bool isOther = std::ranges::count(conversion.unconverted, "matrix") > 0;
    const auto reason = conversion.isRgb ? "the source is RGB" : reasonFor(matrixReasons, conversion.matrix);
    if (!reason.empty() && !isOther)
        changes.push_back({"matrix", "bt709", reason});
    if (conversion.fullRange)
        changes.push_back({"range", "limited", "the source has the full range"});
    return changes;
}

} // namespace

std::vector<Change> colourChanges(const ColourConversion& conversion, TableFilter filter)
{
    std::vector<Change> changes{{"colours", "bt709", "players guess the colours of a file without tags"}};
    if (conversion.isInterlaced)
        changes.push_back({"fields", "deinterlaced", "the source is interlaced"});
    std::ranges::copy(sampleChanges(conversion), std::back_inserter(changes));
    const bool converts = convertsTables(conversion, filter);
    for (const std::string& table : conversion.tables)
        if (converts)
            std::ranges::copy(tableChanges(table), std::back_inserter(changes));
        else
            changes.push_back(withoutTable(table));
    for (const std::string& name : conversion.unconverted)
        changes.push_back(withoutConversion(name));
    return changes;
}

} // namespace stackreel::shim
