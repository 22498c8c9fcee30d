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

/// `probe`: show the properties of a video.
struct ProbeOptions {
    std::filesystem::path source;
    bool json = false;
};

/// `export`: make the vertical video. Paths are as the user wrote them.
struct ExportOptions {
    std::filesystem::path source;
    std::optional<std::filesystem::path> destination; ///< empty for the default name beside the source
    ExportSettings settings;
    std::optional<CropRegion> top;    ///< inside the frame; empty for the default crop
    std::optional<CropRegion> bottom; ///< inside the frame; empty for the default crop
    double from = 0;                  ///< seconds, not negative
    std::optional<double> to;         ///< seconds, greater than `from`; empty for the source's end
    bool overwrite = false;
    bool dryRun = false;
    bool json = false; ///< prints for programs
    bool quiet = false;
};

/// A text that the user asked for, such as the help. It is printed unchanged.
struct Information {
    std::string text;
};

using CliOptions = std::variant<ProbeOptions, ExportOptions, Information, UsageError>;

/// Parses the arguments, which do not include the program's name. Pure: accesses no file.
CliOptions parseOptions(const std::vector<std::string>& arguments);

} // namespace stackreel
