// Parses any bytes as a number and as an aspect. If the result is a value, parsing the text of that value has
// to give the same value.

#include "framing/OutputAspect.h"
#include "media/ProbeNumbers.h"
#include "tests/fuzz/Require.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

using namespace stackreel;

namespace
{

template <typename Number>
std::string textOf(Number number)
{
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto integer = parseInteger(text);
    const auto decimal = parseDecimal(text);
    if (integer) {
        require(parseInteger(textOf(*integer)) == integer, "an integer's text parses to it");
        require(decimal == static_cast<double>(*integer), "an integer is a decimal number");
    }
    if (decimal) {
        require(std::isfinite(*decimal), "a decimal number is finite");
        require(parseDecimal(textOf(*decimal)) == decimal, "a decimal number's text parses to it");
    }
    if (const auto aspect = outputAspect(text))
        require(rawValue(*aspect) == text, "an aspect has its own text");
    return 0;
}
