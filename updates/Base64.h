#pragma once

#include <span>
#include <string>
#include <string_view>

namespace stackreel
{

/// Decodes base64 with padding into `bytes`. Returns false when the text is not valid base64 or does not
/// decode to exactly `bytes.size()` bytes. The content of `bytes` is then unspecified.
bool decodeBase64(std::string_view text, std::span<unsigned char> bytes);

/// Encodes the bytes as base64 with padding.
std::string encodeBase64(std::span<const unsigned char> bytes);

} // namespace stackreel
