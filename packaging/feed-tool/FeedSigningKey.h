#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace stackreel
{

/// The secret half of the key that update feeds are signed with. Any thread.
class FeedSigningKey
{
public:
    /// A new key. Throws `std::runtime_error` when the system has no random numbers.
    static FeedSigningKey generate();
    /// Parses a key that `secret()` returned; none for any other text.
    static std::optional<FeedSigningKey> fromSecret(std::string_view text);

    /// The secret as base64. Its owner must keep it private.
    std::string secret() const;
    /// The public half as base64, the value for the key "SUPublicEDKey".
    std::string publicKey() const;
    /// The feed with its signature before it, in the format that `verifiedFeed` reads.
    std::string signedDocument(std::string_view feed) const;

private:
    std::array<unsigned char, 32> m_seed{};
    std::array<unsigned char, 32> m_public{};
    std::array<unsigned char, 64> m_secret{};

    void derive();
};

} // namespace stackreel
