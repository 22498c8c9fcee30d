#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// The program that tests run as a child process. Its source, test-child.cpp, lists its arguments.
std::filesystem::path testChild();

/// Splits a text into parts that end with `mark`. Text after the last mark is ignored.
std::vector<std::string> pieces(std::string_view text, char mark);

/// The lines "key: value" of a text.
std::map<std::string, std::string> keysAndValues(std::string_view text);

} // namespace stackreel
