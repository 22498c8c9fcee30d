#include "updates/Base64.h"

#include <sodium.h>

namespace stackreel
{

constexpr int variant = sodium_base64_VARIANT_ORIGINAL;

bool decodeBase64(std::string_view text, std::span<unsigned char> bytes)
{
    std::size_t length = 0;
    const int status = sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr,
                                         &length, nullptr, variant);
    // libsodium also accepts some non-ASCII characters as digits. Encoding the bytes again detects them.
    return status == 0 && length == bytes.size() && encodeBase64(bytes) == text;
}

std::string encodeBase64(std::span<const unsigned char> bytes)
{
    std::string text(sodium_base64_encoded_len(bytes.size(), variant), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), variant);
    text.pop_back(); // the terminating NUL
    return text;
}

} // namespace stackreel
