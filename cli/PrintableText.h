#pragma once

#include <string>
#include <string_view>

namespace stackreel
{

/// The text with every control character except the line feed and the tab replaced by "?", so that names,
/// recipes and messages of tools cannot control the terminal. UTF-8; other bytes stay. Pure.
std::string printableText(std::string_view text);

} // namespace stackreel
