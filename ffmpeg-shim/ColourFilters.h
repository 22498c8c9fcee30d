#pragma once

#include "colour/ColourConversion.h"
#include "ffmpeg-shim/Arguments.h"

#include <string>
#include <string_view>

namespace stackreel::shim
{

/// How an FFmpeg can apply colour tables.
enum class TableFilter {
    lut3d,  ///< reads our tables
    zscale, ///< computes high dynamic range itself (`zscale` and `tonemap`) and knows none of the others
    none
};

/// The preferred way in the list that `ffmpeg -filters` prints. `haveTables` is whether the files are there.
TableFilter preferredTableFilter(std::string_view listing, bool haveTables);

/// Whether the tables of the conversion are applied in that way, or their effect is computed.
bool convertsTables(const ColourConversion& conversion, TableFilter filter);

/// The folder with the colour tables, and how they are applied.
struct ColourTables {
    TableFilter filter = TableFilter::lut3d;
    std::string folder = {};
};

/// Whether the arguments are those of an export or of a preview copy, with one input, one output and filters
/// of the known form. Only such arguments are changed by `withBt709`.
bool canConvertColours(const Arguments& arguments);

/// The name of the only input; empty if there is none, or several.
std::string onlyInput(const Arguments& arguments);

/// Changes the filters so that the pictures are BT.709 with limited range, and tagged as such. Matrix and
/// range are converted at the end of the graph; RGB, primaries, gamma and high dynamic range where each half
/// is scaled. Interlaced pictures are deinterlaced and YCgCo is converted before they are split into halves.
/// If the colours do not change, only the tags are set. Tables that cannot be applied are left out. Returns
/// arguments for which `canConvertColours` is false unchanged.
Arguments withBt709(Arguments arguments, const ColourConversion& conversion, const ColourTables& tables);

/// A file's path as the value of a filter's option.
std::string filterValue(const std::string& path);

} // namespace stackreel::shim
