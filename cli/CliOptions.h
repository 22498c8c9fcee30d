#pragma once

#include "cli/UsageError.h"
#include "model/Recipe.h"

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
    Recipe choices; ///< those in the options themselves; `to` is greater than `from` and 0
    std::optional<std::filesystem::path> recipe;     ///< the file with the other choices
    std::optional<std::filesystem::path> like;       ///< the exported video with the other choices, or none
    std::optional<std::filesystem::path> saveRecipe; ///< the file to write the recipe to
    bool overwrite = false;
    bool dryRun = false;
    bool json = false; ///< prints for programs
    bool quiet = false;
};

/// `export … --into`: make the vertical videos of several sources with the same options.
struct ExportManyOptions {
    std::vector<std::filesystem::path> sources; ///< as the user wrote them; at least one
    std::filesystem::path into;                 ///< the folder for the exports
    ExportOptions each;                         ///< without source and destination
};

/// A text that the user asked for, such as the help. It is printed unchanged.
struct Information {
    std::string text;
};

using CliOptions = std::variant<ProbeOptions, ExportOptions, ExportManyOptions, Information, UsageError>;

/// Parses the arguments, which do not include the program's name. Pure: accesses no file.
CliOptions parseOptions(const std::vector<std::string>& arguments);

} // namespace stackreel
