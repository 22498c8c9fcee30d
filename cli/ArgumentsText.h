#pragma once

#include <string>
#include <vector>

namespace stackreel
{

/// The arguments of a program as a dry run prints them. Pure.
struct ArgumentsText {
    /// One argument per line, its bytes unchanged.
    static std::string lines(const std::vector<std::string>& arguments);
    /// A JSON array of strings and a final line feed. Throws `CliError` when an argument is not UTF-8,
    /// because JSON cannot represent it.
    static std::string json(const std::vector<std::string>& arguments);
};

} // namespace stackreel
