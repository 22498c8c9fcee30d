#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace stackreel
{

/// The word nearest to a mistyped one by edit distance: the fewest letters replaced, inserted or deleted; the
/// first of several. None when the distance is more than a third of that word's length.
std::optional<std::string> nearestWord(std::string_view mistyped, std::span<const std::string> words);

} // namespace stackreel
