#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace stackreel
{

/// The word that a mistyped one most likely stands for: the one that takes the fewest letters changed, added
/// or left out, the first of several. None when even that one takes more than a third of the letters.
std::optional<std::string> nearestWord(std::string_view mistyped, std::span<const std::string> words);

} // namespace stackreel
