#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string_view>

namespace stackreel
{

/// Parses a feed's JSON more strictly than the JSON library does: NULs, duplicate keys in one object and
/// nesting deeper than a feed needs are errors. Throws `FeedFormatError`.
nlohmann::json parseFeedDocument(std::string_view json);

} // namespace stackreel
