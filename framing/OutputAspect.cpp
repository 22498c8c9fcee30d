#include "framing/OutputAspect.h"

#include <cstddef>

namespace stackreel
{

namespace
{

constexpr std::array<std::string_view, allOutputAspects.size()> rawValues = {"9:16", "4:5", "1:1", "Custom"};

}

std::string_view rawValue(OutputAspect aspect)
{
    return rawValues[static_cast<std::size_t>(aspect)];
}

std::optional<OutputAspect> outputAspect(std::string_view text)
{
    for (const OutputAspect aspect : allOutputAspects)
        if (rawValue(aspect) == text)
            return aspect;
    return std::nullopt;
}

} // namespace stackreel
