#include "platform/updates/Base64.h"

#include <sodium.h>

namespace stackreel
{

constexpr int variant = sodium_base64_VARIANT_ORIGINAL;

bool decodeBase64(std::string_view text, std::span<unsigned char> bytes)
{
    std::size_t length = 0;
    const int status = sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr,
                                         &length, nullptr, variant);
    // The library also accepts some characters beyond ASCII as digits; encoding again detects them.
    return status == 0 && length == bytes.size() && encodeBase64(bytes) == text;
}

std::string encodeBase64(std::span<const unsigned char> bytes)
{
    std::string text(sodium_base64_encoded_len(bytes.size(), variant), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), variant);
    text.pop_back(); // the NUL at its end
    return text;
}

} // namespace stackreel
