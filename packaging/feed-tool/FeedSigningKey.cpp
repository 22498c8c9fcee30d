#include "packaging/feed-tool/FeedSigningKey.h"

#include "updates/Base64.h"

#include <sodium.h>

#include <stdexcept>

namespace stackreel
{

FeedSigningKey FeedSigningKey::generate()
{
    if (sodium_init() < 0)
        throw std::runtime_error("The system has no random numbers.");
    FeedSigningKey key;
    randombytes_buf(key.m_seed.data(), key.m_seed.size());
    key.derive();
    return key;
}

std::optional<FeedSigningKey> FeedSigningKey::fromSecret(std::string_view text)
{
    FeedSigningKey key;
    if (sodium_init() < 0 || !decodeBase64(text, key.m_seed))
        return std::nullopt;
    key.derive();
    return key;
}

std::string FeedSigningKey::secret() const
{
    return encodeBase64(m_seed);
}

std::string FeedSigningKey::publicKey() const
{
    return encodeBase64(m_public);
}

std::string FeedSigningKey::signedDocument(std::string_view feed) const
{
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(feed.data()),
                         feed.size(), m_secret.data());
    return encodeBase64(signature) + "\n" + std::string(feed);
}

void FeedSigningKey::derive()
{
    crypto_sign_seed_keypair(m_public.data(), m_secret.data(), m_seed.data());
}

} // namespace stackreel
