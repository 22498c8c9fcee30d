#pragma once

#include "updates/FeedSignature.h"
#include "updates/UpdateVersion.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// One version that can be downloaded. UTF-8.
struct UpdateRelease {
    UpdateVersion version;
    std::string versionText;  ///< as written in the feed
    std::string notes;        ///< plain text; line feeds and tabs are the only control characters
    std::string downloadPage; ///< an absolute https address in ASCII

    bool operator==(const UpdateRelease&) const = default;
};

/// The content of an update feed.
struct UpdateFeed {
    std::int64_t serial = 0;             ///< positive, and higher in each new feed
    std::vector<UpdateRelease> releases; ///< 1 to 100

    /// The release with the highest version.
    const UpdateRelease& newest() const;

    /// Decodes a feed's JSON: `{"serial": 7, "releases": [{"version": "0.2.0", "notes": "…", "download":
    /// "https://…"}]}`. Ignores other keys. Throws `FeedFormatError` for anything else, including duplicate
    /// keys, nesting deeper than a feed needs, NULs and numbers out of range.
    static UpdateFeed decode(std::string_view json);

    bool operator==(const UpdateFeed&) const = default;
};

/// Returns the feed in a signed document. The feed is parsed only after its signature is verified. Throws
/// `UpdateError` when the signature is wrong, when the feed cannot be read, or when its serial is below
/// `newestSerial`.
UpdateFeed acceptedFeed(std::string_view document, const FeedKey& key, std::int64_t newestSerial);

} // namespace stackreel
