#include "updates/FeedSignature.h"

#include "updates/Base64.h"

#include <sodium.h>

namespace stackreel
{

namespace
{

using Signature = std::array<unsigned char, crypto_sign_BYTES>;
static_assert(sizeof(FeedKey::bytes) == crypto_sign_PUBLICKEYBYTES);

constexpr std::size_t signatureLength =
    sodium_base64_ENCODED_LEN(crypto_sign_BYTES, sodium_base64_VARIANT_ORIGINAL) - 1;

} // namespace

std::optional<FeedKey> FeedKey::fromBase64(std::string_view text)
{
    FeedKey key;
    return decodeBase64(text, key.bytes) ? std::optional(key) : std::nullopt;
}

std::optional<std::string_view> verifiedFeed(std::string_view document, const FeedKey& key)
{
    Signature signature{};
    if (sodium_init() < 0 || document.size() <= signatureLength || document[signatureLength] != '\n' ||
        !decodeBase64(document.substr(0, signatureLength), signature))
        return std::nullopt;
    const std::string_view feed = document.substr(signatureLength + 1);
    const auto* bytes = reinterpret_cast<const unsigned char*>(feed.data());
    if (crypto_sign_verify_detached(signature.data(), bytes, feed.size(), key.bytes.data()) != 0)
        return std::nullopt;
    return feed;
}

} // namespace stackreel
