#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace stackreel
{

/// The output formats, in the order they are offered.
enum class OutputAspect { portrait, feed, square, custom };

inline constexpr std::array allOutputAspects = {OutputAspect::portrait, OutputAspect::feed,
                                                OutputAspect::square, OutputAspect::custom};

/// The aspect's text, which is also its identifier and its label: "9:16", "4:5", "1:1" or "Custom".
std::string_view rawValue(OutputAspect aspect);

/// The aspect with exactly this text; none for any other.
std::optional<OutputAspect> outputAspect(std::string_view rawValue);

} // namespace stackreel
