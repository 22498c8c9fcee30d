#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

namespace stackreel
{

/// Parses a feed's JSON more strictly than the parser does on its own: no NUL, no key given twice in one
/// object, no nesting deeper than a feed needs. Throws `FeedFormatError`.
nlohmann::json parseFeedDocument(std::string_view json);

} // namespace stackreel
