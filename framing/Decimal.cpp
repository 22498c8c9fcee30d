#include "framing/Decimal.h"

#include <array>
#include <charconv>

namespace stackreel
{

std::string fixedDecimal(double value, int decimals)
{
    // Large enough for every finite double.
    std::array<char, 384> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

} // namespace stackreel
