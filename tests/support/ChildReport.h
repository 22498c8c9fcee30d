#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// The program that tests run as a child; what it does is told by its arguments, see its source.
std::filesystem::path testChild();

/// The pieces of a text that each end in the mark.
std::vector<std::string> pieces(std::string_view text, char mark);

/// The lines "key: value" of a text.
std::map<std::string, std::string> keysAndValues(std::string_view text);

} // namespace stackreel
