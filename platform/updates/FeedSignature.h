#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace stackreel
{

/// The public half of the key that feeds are signed with: Ed25519, 32 bytes.
struct FeedKey {
    std::array<unsigned char, 32> bytes{};

    /// Reads base64 as it is written with padding and without blanks; none for anything else or any other
    /// length.
    static std::optional<FeedKey> fromBase64(std::string_view text);
};

/// A signed document is one line with the signature in base64, a line feed, and the feed. Gives the feed,
/// which is every byte after that line feed, when the signature was made over exactly those bytes with the
/// key's other half; none otherwise. The result refers to the document. Nothing of the feed is interpreted.
std::optional<std::string_view> verifiedFeed(std::string_view document, const FeedKey& key);

} // namespace stackreel
