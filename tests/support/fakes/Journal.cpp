#include "tests/support/fakes/Journal.h"

#include <array>
#include <charconv>
#include <cmath>

namespace stackreel
{

std::string described(double value)
{
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string described(MediaTime time)
{
    if (std::isnan(time.seconds()))
        return "no time";
    return std::to_string(time.units()) + "/" + std::to_string(MediaTime::timescale);
}

} // namespace stackreel
