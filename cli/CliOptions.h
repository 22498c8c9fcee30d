#pragma once

#include "cli/UsageError.h"
#include "framing/CropRegion.h"
#include "framing/ExportSettings.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace stackreel
{

/// `probe`: show the facts of a video.
struct ProbeOptions {
    std::filesystem::path source;
    bool json = false;
};

/// `export`: make the vertical video. Paths are as the user wrote them.
struct ExportOptions {
    std::filesystem::path source;
    std::optional<std::filesystem::path> destination; ///< none for the default name beside the source
    ExportSettings settings;
    std::optional<CropRegion> top;    ///< inside the frame; none for the default crop
    std::optional<CropRegion> bottom; ///< inside the frame; none for the default crop
    double from = 0;                  ///< seconds, not negative
    std::optional<double> to;         ///< seconds, greater than `from`; none for the source's end
    bool overwrite = false;
    bool dryRun = false;
    bool json = false; ///< only together with `dryRun`
    bool quiet = false;
};

/// A text the user asked for, such as the help, to be printed as it is.
struct Information {
    std::string text;
};

using CliOptions = std::variant<ProbeOptions, ExportOptions, Information, UsageError>;

/// The options in the arguments, which come without the program's own name. Pure: no file is accessed.
CliOptions parseOptions(const std::vector<std::string>& arguments);

} // namespace stackreel
