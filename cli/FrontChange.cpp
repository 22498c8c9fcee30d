#include "cli/FrontChange.h"

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr std::string_view mark = "[stackreel] ";
constexpr std::string_view beforeReason = ": ";

} // namespace

bool FrontChange::isReport(std::string_view line)
{
    return line.starts_with(mark);
}

std::optional<FrontChange> FrontChange::parse(std::string_view line)
{
    if (!isReport(line))
        return std::nullopt;
    line.remove_prefix(mark.size());
    const std::size_t equals = line.find('=');
    const std::size_t colon = line.find(beforeReason);
    if (equals == 0 || equals == std::string_view::npos || colon == std::string_view::npos || colon < equals)
        return std::nullopt;
    return FrontChange{.name = std::string(line.substr(0, equals)),
                       .value = std::string(line.substr(equals + 1, colon - equals - 1)),
                       .reason = std::string(line.substr(colon + beforeReason.size()))};
}

std::string FrontChange::warning(const std::string& file) const
{
    if (value != "unconverted")
        return "";
    std::string words = name;
    std::replace(words.begin(), words.end(), '-', ' ');
    return "Warning: " + file + " keeps the " + words + " of its source: " + reason + ".";
}

} // namespace stackreel
