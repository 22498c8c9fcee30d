// Decodes any bytes as an update feed, as the signed part of a document, and as a document. The result has to
// be an error with a description, or a valid feed.

#include "packaging/feed-tool/FeedSigningKey.h"
#include "tests/fuzz/Require.h"
#include "updates/UpdateError.h"
#include "updates/UpdateFeed.h"

#include <algorithm>

using namespace stackreel;

namespace
{

void check(const UpdateFeed& feed)
{
    require(feed.serial > 0, "a serial is positive");
    require(!feed.releases.empty() && feed.releases.size() <= 100, "there are 1 to 100 releases");
    for (const UpdateRelease& release : feed.releases) {
        require(UpdateVersion::parse(release.versionText) == release.version, "a version has its text");
        require(release.version <= feed.newest().version, "none is newer than the newest");
        require(release.notes.find('\0') == std::string::npos, "notes have no NUL");
        require(release.notes.find('\x1B') == std::string::npos, "notes have no escape character");
        require(release.notes.find("\u202E") == std::string::npos, "notes do not change the text direction");
        require(std::tolower(release.downloadPage[0]) == 'h' && release.downloadPage[5] == ':',
                "a download page is an https address");
    }
}

const FeedSigningKey& signingKey()
{
    // The key is always the same, so that a finding is reproducible.
    static const FeedSigningKey key = FeedSigningKey::fromSecret(std::string(43, 'A') + "=").value();
    return key;
}

/// The feed in a document, as the program reads it. Returns `std::nullopt` if the document is rejected, and
/// then requires that the error has a description.
std::optional<UpdateFeed> accepted(std::string_view document, std::int64_t newestSerial)
{
    static const FeedKey key = FeedKey::fromBase64(signingKey().publicKey()).value();
    try {
        return acceptedFeed(document, key, newestSerial);
    } catch (const UpdateError& error) {
        require(error.what()[0] != '\0', "a rejection has a reason");
        return std::nullopt;
    }
}

std::optional<UpdateFeed> decoded(std::string_view text)
{
    try {
        return UpdateFeed::decode(text);
    } catch (const FeedFormatError& error) {
        require(error.what()[0] != '\0', "an error has a description");
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto feed = decoded(text);
    if (feed)
        check(*feed);
    const std::string document = signingKey().signedDocument(text);
    require(accepted(document, 0) == feed, "a signed feed is what its text says");
    if (feed && feed->serial < INT64_MAX)
        require(!accepted(document, feed->serial + 1), "an older feed is rejected");
    // The text replaces the signed feed, then the whole document.
    const std::string forged = signingKey().signedDocument("{}").substr(0, 89) + std::string(text);
    require(!accepted(forged, 0), "a signature is valid for no other feed");
    require(!accepted(text, 0), "an unsigned document is rejected");
    return 0;
}
