#pragma once

#include <span>
#include <string>
#include <string_view>

namespace stackreel
{

/// Fills the bytes from base64 with padding; false when the text is anything else, or not exactly as long as
/// that takes. The bytes are unspecified then.
bool decodeBase64(std::string_view text, std::span<unsigned char> bytes);

/// The bytes as base64 with padding.
std::string encodeBase64(std::span<const unsigned char> bytes);

} // namespace stackreel
