#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace stackreel
{

/// The secret key with which update feeds are signed. Any thread.
class FeedSigningKey
{
public:
    /// Generates a new key. Throws `std::runtime_error` if the system provides no random numbers.
    static FeedSigningKey generate();
    /// Parses a key that `secret()` returned. Returns `std::nullopt` for any other text.
    static std::optional<FeedSigningKey> fromSecret(std::string_view text);

    /// The secret key as base64. It must be kept private.
    std::string secret() const;
    /// The public key as base64, which is the value of "SUPublicEDKey" in the information dictionary.
    std::string publicKey() const;
    /// The feed preceded by its signature, in the format that `verifiedFeed` reads.
    std::string signedDocument(std::string_view feed) const;

private:
    std::array<unsigned char, 32> m_seed{};
    std::array<unsigned char, 32> m_public{};
    std::array<unsigned char, 64> m_secret{};

    void derive();
};

} // namespace stackreel
