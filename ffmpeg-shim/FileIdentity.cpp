#include "ffmpeg-shim/FileIdentity.h"

#include <sys/stat.h>

#include <charconv>
#include <cstdint>

namespace stackreel::shim
{

namespace
{

std::optional<std::uint64_t> wholeNumber(std::string_view text)
{
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::optional<FileIdentity> identityFromText(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto device = wholeNumber(text.substr(0, colon));
    const auto inode = wholeNumber(text.substr(colon + 1));
    if (!device || !inode)
        return std::nullopt;
    return FileIdentity{*device, *inode};
}

} // namespace

std::optional<FileIdentity> identityOf(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

std::string identitiesText(const std::vector<FileIdentity>& identities)
{
    std::string text;
    for (const FileIdentity& identity : identities) {
        if (!text.empty())
            text += ',';
        text += std::to_string(identity.device) + ':' + std::to_string(identity.inode);
    }
    return text;
}

std::vector<FileIdentity> identitiesFromText(std::string_view text)
{
    std::vector<FileIdentity> identities;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        if (const auto identity = identityFromText(text.substr(0, comma)))
            identities.push_back(*identity);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return identities;
}

} // namespace stackreel::shim
