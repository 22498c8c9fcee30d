#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

/// Reads the values of a JSON object in a recipe. Every failure is a `CliError` that names the value
/// ("top.x") and the file. Keeps references to the object and to the name of the file.
class RecipeObject
{
public:
    RecipeObject(const nlohmann::json& object, std::string prefix, const std::string& file)
        : m_object(object), m_prefix(std::move(prefix)), m_file(file)
    {
    }

    /// Throws where the object has another key than these.
    void requireKnown(const std::vector<std::string>& keys) const;
    /// Throws the error for a value that is not as expected: "a time in seconds".
    [[noreturn]] void fail(const std::string& key, const std::string& expected) const;

    /// Null where there is no such key.
    const nlohmann::json* find(const char* key) const;
    /// A finite number. Throws where there is none.
    double number(const char* key, const std::string& expected) const;
    /// A whole number from `least` to `most`. Throws where there is none.
    std::int64_t wholeNumber(const char* key, const std::string& expected, std::int64_t least,
                             std::int64_t most) const;
    /// An object in this one; empty where there is no such key.
    std::optional<RecipeObject> object(const char* key, const std::string& expected) const;

private:
    [[noreturn]] void failUnknown(const std::string& key, const std::vector<std::string>& keys) const;

    const nlohmann::json& m_object;
    std::string m_prefix;
    const std::string& m_file;
};

} // namespace stackreel
