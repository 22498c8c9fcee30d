#include "ffmpeg-shim/ExportColours.h"

#include "ffmpeg-shim/ColourFilters.h"
#include "ffmpeg-shim/Process.h"
#include "ffmpeg-shim/ToolSearch.h"

#include <filesystem>
#include <optional>

namespace stackreel::shim
{

namespace
{

namespace fs = std::filesystem;

std::optional<SourceVideo> look(const std::string& file)
{
    const auto ffprobe = systemTool("ffprobe");
    const auto report = ffprobe ? outputOf(*ffprobe, sourceVideoQuery(file)) : std::nullopt;
    return report ? parseSourceVideo(*report) : std::nullopt;
}

/// The folder of the tables, beside this program.
std::string tableFolder()
{
    std::error_code error;
    return (fs::read_symlink("/proc/self/exe", error).parent_path() / "colours").string();
}

bool areReadable(const std::vector<std::string>& tables, const std::string& folder)
{
    std::error_code error;
    for (const std::string& table : tables)
        if (!fs::is_regular_file(folder + "/" + table + ".cube", error))
            return false;
    return true;
}

/// How FFmpeg applies the tables. Removes those that it cannot apply.
ColourTables tablesOf(ColourConversion& conversion, const std::string& ffmpeg)
{
    ColourTables tables{.filter = TableFilter::none, .folder = tableFolder()};
    const auto listing = outputOf(ffmpeg, {"-hide_banner", "-filters"});
    if (listing)
        tables.filter = preferredTableFilter(*listing, areReadable(conversion.tables, tables.folder));
    if (tables.filter == TableFilter::none && conversion.isHdr())
        writeError("The colours stay those of high dynamic range and look pale: this FFmpeg needs the filter "
                   "lut3d, or zscale and tonemap.");
    if (tables.filter == TableFilter::none || (tables.filter == TableFilter::zscale && !conversion.isHdr()))
        conversion.tables.clear();
    return tables;
}

} // namespace

Arguments withExportColours(Arguments arguments, const std::string& ffmpeg)
{
    if (!canConvertColours(arguments))
        return arguments;
    const auto source = look(onlyInput(arguments));
    if (!source)
        return arguments;
    ColourConversion conversion = conversionToBt709(*source);
    const ColourTables tables = conversion.tables.empty() ? ColourTables{} : tablesOf(conversion, ffmpeg);
    return withBt709(std::move(arguments), conversion, tables);
}

} // namespace stackreel::shim
