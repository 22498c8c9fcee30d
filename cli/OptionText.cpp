#include "cli/OptionText.h"

#include "media/ProbeNumbers.h"

#include <algorithm>
#include <array>

namespace stackreel
{

namespace
{

std::optional<std::int64_t> unsignedInteger(std::string_view text)
{
    const bool hasSign = text.starts_with('+') || text.starts_with('-');
    return hasSign ? std::nullopt : parseInteger(text);
}

std::optional<std::int64_t> side(std::string_view text)
{
    const auto value = unsignedInteger(text);
    if (!value || *value < OptionText::smallestSide || *value > OptionText::largestSide)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<double> OptionText::seconds(std::string_view text)
{
    const auto value = parseDecimal(text);
    if (!value || *value < 0 || *value > latestTime)
        return std::nullopt;
    // Adding 0 changes -0.0 to 0.0, which prints without a sign.
    return *value + 0.0;
}

std::optional<PixelSize> OptionText::size(std::string_view text)
{
    const auto separator = text.find('x');
    if (separator == std::string_view::npos)
        return std::nullopt;
    const auto width = side(text.substr(0, separator));
    const auto height = side(text.substr(separator + 1));
    if (!width || !height)
        return std::nullopt;
    return PixelSize{.width = *width, .height = *height};
}

std::optional<CropRegion> OptionText::region(std::string_view text)
{
    if (std::count(text.begin(), text.end(), ',') != 3)
        return std::nullopt;
    std::array<double, 4> numbers{};
    for (double& number : numbers) {
        const auto end = std::min(text.find(','), text.size());
        const auto value = parseDecimal(text.substr(0, end));
        if (!value)
            return std::nullopt;
        number = *value;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const CropRegion region = {.x = numbers[0], .y = numbers[1], .width = numbers[2], .height = numbers[3]};
    return region.clampedToFrame();
}

std::optional<std::int64_t> OptionText::track(std::string_view text)
{
    const auto number = unsignedInteger(text);
    return number && *number >= 1 && *number <= lastTrack ? number : std::nullopt;
}

} // namespace stackreel
