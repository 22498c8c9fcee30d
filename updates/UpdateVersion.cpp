#include "updates/UpdateVersion.h"

#include <algorithm>
#include <charconv>

namespace stackreel
{

namespace
{

std::optional<std::uint32_t> parseNumber(std::string_view digits)
{
    const bool areDigits =
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (digits.empty() || digits.size() > 9 || !areDigits || (digits.size() > 1 && digits.front() == '0'))
        return std::nullopt;
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

} // namespace

std::optional<UpdateVersion> UpdateVersion::parse(std::string_view text)
{
    UpdateVersion version;
    for (std::uint32_t& number : version.numbers) {
        const std::size_t end = std::min(text.find('.'), text.size());
        const auto parsed = parseNumber(text.substr(0, end));
        if (!parsed)
            return std::nullopt;
        number = *parsed;
        if (end == text.size())
            return version;
        text.remove_prefix(end + 1);
    }
    return std::nullopt;
}

} // namespace stackreel
