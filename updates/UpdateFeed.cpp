#include "updates/UpdateFeed.h"

#include "updates/FeedDocument.h"
#include "updates/UpdateError.h"

#include <QUrl>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

constexpr std::size_t maxReleases = 100;
constexpr std::size_t maxAddressLength = 2000;

[[noreturn]] void fail(std::string_view path, std::string_view problem)
{
    throw FeedFormatError(std::string(path).append(" ").append(problem));
}

const Json& member(const Json& object, std::string_view path, const char* key)
{
    if (!object.is_object())
        fail(path, "is not an object");
    const auto found = object.find(key);
    if (found == object.end())
        fail(path, std::string("has no “") + key + "”");
    return *found;
}

std::string textMember(const Json& object, const std::string& path, const char* key)
{
    const Json& value = member(object, path, key);
    if (!value.is_string())
        fail(path + "." + key, "is not a text");
    return value.get<std::string>();
}

/// A character that could hide or reorder the text around it, or start a new line.
bool isControl(char32_t c)
{
    const bool isBidirectional = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    const bool isSeparator = c == 0x2028 || c == 0x2029;
    return (c < 0x20 && c != '\n' && c != '\t') || (c >= 0x7F && c < 0xA0) || isBidirectional || isSeparator;
}

bool hasControls(const std::string& text)
{
    const std::u32string characters = QString::fromStdString(text).toStdU32String();
    return std::any_of(characters.begin(), characters.end(), isControl);
}

bool isDownloadPage(const std::string& address)
{
    const bool isVisibleAscii =
        std::all_of(address.begin(), address.end(), [](char c) { return c > 0x20 && c < 0x7F; });
    if (!isVisibleAscii || address.size() > maxAddressLength)
        return false;
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    // Look for "@" instead of a user name, because an empty user name is not allowed either.
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() &&
           !url.authority().contains(QLatin1Char('@'));
}

std::int64_t decodeSerial(const Json& root)
{
    const Json& value = member(root, "the feed", "serial");
    // An "unsigned" number in nlohmann-json has no sign, fraction or exponent.
    if (!value.is_number_unsigned())
        fail("serial", "is not a whole number above zero");
    const auto serial = value.get<std::uint64_t>();
    if (serial == 0 || serial > std::uint64_t{INT64_MAX})
        fail("serial", "is out of range");
    return static_cast<std::int64_t>(serial);
}

UpdateRelease decodeRelease(const Json& value, const std::string& path)
{
    UpdateRelease release = {.version = {},
                             .versionText = textMember(value, path, "version"),
                             .notes = textMember(value, path, "notes"),
                             .downloadPage = textMember(value, path, "download")};
    const auto version = UpdateVersion::parse(release.versionText);
    if (!version)
        fail(path + ".version", "is not a version");
    release.version = *version;
    if (hasControls(release.notes))
        fail(path + ".notes", "has control characters");
    if (!isDownloadPage(release.downloadPage))
        fail(path + ".download", "is not an https address");
    return release;
}

} // namespace

const UpdateRelease& UpdateFeed::newest() const
{
    const auto byVersion = [](const UpdateRelease& a, const UpdateRelease& b) {
        return a.version < b.version;
    };
    return *std::max_element(releases.begin(), releases.end(), byVersion);
}

UpdateFeed UpdateFeed::decode(std::string_view json)
{
    const Json root = parseFeedDocument(json);
    UpdateFeed feed = {.serial = decodeSerial(root), .releases = {}};
    const Json& releases = member(root, "the feed", "releases");
    if (!releases.is_array() || releases.empty() || releases.size() > maxReleases)
        fail("releases", "is not a list of 1 to 100 releases");
    for (const Json& release : releases)
        feed.releases.push_back(
            decodeRelease(release, "releases[" + std::to_string(feed.releases.size()) + "]"));
    return feed;
}

UpdateFeed acceptedFeed(std::string_view document, const FeedKey& key, std::int64_t newestSerial)
{
    constexpr const char* untrusted = "The update information could not be verified, so it was ignored.";
    const auto verified = verifiedFeed(document, key);
    if (!verified)
        throw UpdateError(untrusted);
    UpdateFeed feed;
    try {
        feed = UpdateFeed::decode(*verified);
    } catch (const FeedFormatError&) {
        throw UpdateError("The update information could not be read, so it was ignored.");
    }
    if (feed.serial < newestSerial)
        throw UpdateError("The update information is older than what came before, so it was ignored.");
    return feed;
}

} // namespace stackreel
