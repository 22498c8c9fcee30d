#include "model/SourceFacts.h"

#include <array>
#include <charconv>
#include <cmath>

namespace stackreel
{

namespace
{

/// All digits of a whole number. The buffer is large enough for every finite double.
std::string decimal(double whole)
{
    std::array<char, 384> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), whole, std::chars_format::fixed, 0);
    return {text.data(), result.ptr};
}

} // namespace

std::string SourceFacts::frame(const MediaInfo& media)
{
    return std::to_string(media.displayedWidth()) + " × " + std::to_string(media.displayedHeight());
}

std::string SourceFacts::video(const MediaInfo& media)
{
    return upperCase(media.videoCodec);
}

std::string SourceFacts::upperCase(std::string name)
{
    for (char& letter : name)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    return name;
}

std::string SourceFacts::duration(double seconds)
{
    if (!std::isfinite(seconds) || seconds <= 0)
        return "Unknown";
    // Calculate in floating point, because a duration may exceed the range of every integer type.
    const double rounded = std::round(seconds);
    const double remainder = std::fmod(rounded, 60);
    return decimal((rounded - remainder) / 60) + (remainder < 10 ? ":0" : ":") + decimal(remainder);
}

} // namespace stackreel
