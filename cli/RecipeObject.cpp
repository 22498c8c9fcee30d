#include "cli/RecipeObject.h"

#include "cli/CliError.h"
#include "cli/NearestWord.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace stackreel
{

void RecipeObject::requireKnown(const std::vector<std::string>& keys) const
{
    for (const auto& [key, value] : m_object.items())
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            failUnknown(key, keys);
}

void RecipeObject::failUnknown(const std::string& key, const std::vector<std::string>& keys) const
{
    std::string message = "The recipe “" + m_file + "” has the unknown key “" + m_prefix + key + "”.";
    if (const auto nearest = nearestWord(key, keys))
        message += " Did you mean “" + m_prefix + *nearest + "”?";
    throw CliError(message);
}

void RecipeObject::fail(const std::string& key, const std::string& expected) const
{
    throw CliError("The value of “" + m_prefix + key + "” in the recipe “" + m_file + "” is not " + expected +
                   ".");
}

const nlohmann::json* RecipeObject::find(const char* key) const
{
    const auto found = m_object.find(key);
    return found == m_object.end() ? nullptr : &*found;
}

double RecipeObject::number(const char* key, const std::string& expected) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr || !value->is_number() || !std::isfinite(value->get<double>()))
        fail(key, expected);
    return value->get<double>();
}

std::int64_t RecipeObject::wholeNumber(const char* key, const std::string& expected, std::int64_t least,
                                       std::int64_t most) const
{
    const double value = number(key, expected);
    const bool isInRange = value >= static_cast<double>(least) && value <= static_cast<double>(most);
    if (!isInRange || std::trunc(value) != value)
        fail(key, expected);
    return static_cast<std::int64_t>(value);
}

std::optional<RecipeObject> RecipeObject::object(const char* key, const std::string& expected) const
{
    const nlohmann::json* value = find(key);
    if (value == nullptr)
        return std::nullopt;
    if (!value->is_object())
        fail(key, expected);
    return RecipeObject(*value, m_prefix + key + ".", m_file);
}

} // namespace stackreel
