#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace stackreel
{

/// The public key that verifies feeds: Ed25519, 32 bytes.
struct FeedKey {
    std::array<unsigned char, 32> bytes{};

    /// Decodes base64 with padding and without blanks. Returns `std::nullopt` for any other text, and for a
    /// key of another length.
    static std::optional<FeedKey> fromBase64(std::string_view text);
};

/// Verifies a signed document: the signature in base64 on one line, a line feed, and the feed. Returns the
/// feed, which is every byte after that line feed, if the signature matches these bytes and the key;
/// otherwise `std::nullopt`. The result is a view into the document. The feed itself is not parsed.
std::optional<std::string_view> verifiedFeed(std::string_view document, const FeedKey& key);

} // namespace stackreel
