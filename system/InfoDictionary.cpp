#include "system/InfoDictionary.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

namespace stackreel
{

InfoDictionary InfoDictionary::read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    // Read the file through a stream, which only sets a flag on a read error. The parser would throw.
    std::ostringstream content;
    content << stream.rdbuf();
    const auto root = nlohmann::json::parse(content.str(), nullptr, false);
    std::map<std::string, std::string> texts;
    if (!root.is_object())
        return {};
    for (const auto& [key, value] : root.items())
        if (value.is_string())
            texts.emplace(key, value.get<std::string>());
    return InfoDictionary(std::move(texts));
}

std::optional<std::string> InfoDictionary::text(const std::string& key) const
{
    const auto found = m_texts.find(key);
    return found == m_texts.end() ? std::nullopt : std::optional(found->second);
}

} // namespace stackreel
