#pragma once

#include <string>
#include <vector>

namespace stackreel
{

/// The arguments of a program as a dry run prints them. Pure.
struct ArgumentsText {
    /// One per line, bytes as they are.
    static std::string lines(const std::vector<std::string>& arguments);
    /// A JSON array of strings and a final line feed. Throws `CliError` when an argument is not UTF-8, which
    /// JSON cannot carry.
    static std::string json(const std::vector<std::string>& arguments);
};

} // namespace stackreel
