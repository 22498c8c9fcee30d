#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stackreel
{

/// Something that the front (`ffmpeg` in the resource directory) does differently from the arguments of an
/// export, or that it could not do, as it reports on standard error.
struct FrontChange {
    std::string name;   ///< what is changed, for programs: "encoder"
    std::string value;  ///< what it becomes: "libx264"; "unconverted" if it could not be changed
    std::string reason; ///< why, as a part of a sentence

    /// Whether the line is such a report, also one that `parse` does not understand.
    static bool isReport(std::string_view line);
    /// Parses a line "[stackreel] NAME=VALUE: REASON", given without its line terminator. Returns
    /// `std::nullopt` for any other line. Pure.
    static std::optional<FrontChange> parse(std::string_view line);
    /// The sentence for the user of the export `file` if the value is "unconverted"; empty otherwise.
    std::string warning(const std::string& file) const;

    bool operator==(const FrontChange&) const = default;
};

} // namespace stackreel
