#pragma once

#include <string>

namespace stackreel
{

/// Whether the text is a random UUID (version 4) in upper case.
bool isUpperCaseUuid(const std::string& text);

} // namespace stackreel
