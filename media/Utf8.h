#pragma once

#include <string>
#include <string_view>

namespace stackreel
{

/// The bytes as well-formed UTF-8: whatever is not is replaced by U+FFFD, one for each longest run of bytes
/// that starts a character and does not finish it, as Unicode recommends. Everything else stays, byte order
/// marks and NULs included. Any thread.
std::string replacingInvalidUtf8(std::string_view bytes);

} // namespace stackreel
