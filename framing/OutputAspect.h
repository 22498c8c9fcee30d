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

/// The text of an aspect, used both as its identifier and as its label: "9:16", "4:5", "1:1" or "Custom".
std::string_view rawValue(OutputAspect aspect);

/// The aspect with exactly this text; `std::nullopt` for any other text.
std::optional<OutputAspect> outputAspect(std::string_view rawValue);

} // namespace stackreel
