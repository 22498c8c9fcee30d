#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace stackreel
{

/// Parses a base-10 integer: at most one leading "+" or "-", then only digits, within 64 bits. Returns
/// `std::nullopt` for any other text. Independent of the locale.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Parses a decimal number with optional sign, fraction and exponent. Returns `std::nullopt` for any other
/// text, such as a number with blanks around it, and for a number that is too large or too small for a
/// double. Independent of the locale.
std::optional<double> parseDecimal(std::string_view text);

} // namespace stackreel
