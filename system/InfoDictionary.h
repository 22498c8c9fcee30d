#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace stackreel
{

/// The application's information dictionary: values that are set when the build is configured, such as the
/// address of the update feed. An immutable value; any thread.
class InfoDictionary
{
public:
    /// A dictionary without values.
    InfoDictionary() = default;
    explicit InfoDictionary(std::map<std::string, std::string> texts) : m_texts(std::move(texts)) {}

    /// Reads a JSON file that holds one object. The dictionary is empty when the file is missing, cannot be
    /// read or holds anything else.
    static InfoDictionary read(const std::filesystem::path& file);

    /// The text of a key; `std::nullopt` when the key is absent or its value is not a string.
    std::optional<std::string> text(const std::string& key) const;

private:
    std::map<std::string, std::string> m_texts;
};

} // namespace stackreel
