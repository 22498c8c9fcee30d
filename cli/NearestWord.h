#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace stackreel
{

/// The word with the smallest edit distance to a mistyped one; the first one if several are equally near. The
/// edit distance is the smallest number of letters to replace, insert or delete. Returns `std::nullopt` when
/// it is more than a third of that word's length.
std::optional<std::string> nearestWord(std::string_view mistyped, std::span<const std::string> words);

} // namespace stackreel
