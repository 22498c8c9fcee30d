#pragma once

#include <string>
#include <string_view>

namespace stackreel
{

/// Replaces invalid UTF-8 in the bytes by U+FFFD: one for each longest run of bytes that starts a character
/// and does not finish it, as Unicode recommends. Everything else stays, including byte order marks and NULs.
/// Any thread.
std::string replacingInvalidUtf8(std::string_view bytes);

} // namespace stackreel
