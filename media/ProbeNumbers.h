#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace stackreel
{

/// A base-10 integer: at most one leading "+" or "-", then digits and nothing else, within 64 bits. None
/// otherwise. Independent of the locale.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// A decimal number, with optional sign, fraction and exponent, filling the whole text: blanks around it make
/// it no number. None otherwise, nor when it is too large or too small for a double. Independent of the
/// locale.
std::optional<double> parseDecimal(std::string_view text);

} // namespace stackreel
