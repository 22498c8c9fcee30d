#include "cli/ArgumentsText.h"

#include "cli/CliError.h"

#include <nlohmann/json.hpp>

namespace stackreel
{

std::string ArgumentsText::lines(const std::vector<std::string>& arguments)
{
    std::string text;
    for (const std::string& argument : arguments)
        text += argument + "\n";
    return text;
}

std::string ArgumentsText::json(const std::vector<std::string>& arguments)
{
    try {
        return nlohmann::json(arguments).dump(2) + "\n";
    } catch (const nlohmann::json::exception&) {
        throw CliError("A file name is not UTF-8, which JSON cannot carry. Leave --json out.");
    }
}

} // namespace stackreel
