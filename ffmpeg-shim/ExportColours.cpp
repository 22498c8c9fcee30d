#include "ffmpeg-shim/ExportColours.h"

#include "ffmpeg-shim/ColourChanges.h"
#include "ffmpeg-shim/ColourFilters.h"
#include "ffmpeg-shim/Process.h"
#include "ffmpeg-shim/SourceVideo.h"
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

/// How FFmpeg applies the tables of the conversion.
ColourTables tablesOf(const ColourConversion& conversion, const std::string& ffmpeg)
{
    ColourTables tables{.filter = TableFilter::none, .folder = tableFolder()};
    const auto listing = outputOf(ffmpeg, {"-hide_banner", "-filters"});
    if (listing)
        tables.filter = preferredTableFilter(*listing, areReadable(conversion.tables, tables.folder));
    return tables;
}

} // namespace

ChangedArguments withExportColours(Arguments arguments, const std::string& ffmpeg)
{
    if (!canConvertColours(arguments))
        return {std::move(arguments), {}};
    const auto source = look(onlyInput(arguments));
    if (!source)
        return {std::move(arguments), {{"colours", unconverted, "ffprobe does not describe them"}}};
    const ColourConversion conversion = conversionToBt709(*source);
    const ColourTables tables = conversion.tables.empty() ? ColourTables{} : tablesOf(conversion, ffmpeg);
    return {withBt709(std::move(arguments), conversion, tables), colourChanges(conversion, tables.filter)};
}

} // namespace stackreel::shim
