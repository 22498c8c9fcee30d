#include "media/ProbeNumbers.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace stackreel
{

namespace
{

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Removes a leading "+", which `std::from_chars` does not accept. Returns `std::nullopt` for "+-5":
/// `std::from_chars` would accept the remaining "-5".
std::optional<std::string_view> withoutPlus(std::string_view text)
{
    if (!text.starts_with('+'))
        return text;
    text.remove_prefix(1);
    if (text.starts_with('-'))
        return std::nullopt;
    return text;
}

template <typename Number>
std::optional<Number> parseWhole(std::string_view text)
{
    Number number{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    const auto number = withoutPlus(text);
    if (!number)
        return std::nullopt;
    return parseWhole<std::int64_t>(*number);
}

std::optional<double> parseDecimal(std::string_view text)
{
    const auto number = withoutPlus(text);
    if (!number)
        return std::nullopt;
    // `std::from_chars` also accepts "inf" and "nan", which are not decimal numbers.
    const auto isDecimal = [](char character) {
        return isDigit(character) || std::string_view("+-.eE").find(character) != std::string_view::npos;
    };
    if (!std::all_of(number->begin(), number->end(), isDecimal))
        return std::nullopt;
    return parseWhole<double>(*number);
}

} // namespace stackreel
