#pragma once

#include "system/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// The identity of the file at `path`, with symbolic links followed. Returns `std::nullopt` if the file does
/// not exist or cannot be examined.
std::optional<FileIdentity> identityOf(const std::string& path);

/// Identities as a text for an environment variable: "device:inode" in decimal, joined by commas.
std::string identitiesText(const std::vector<FileIdentity>& identities);

/// Parses a text made by `identitiesText`. Entries in any other format are ignored, because anyone may set an
/// environment variable.
std::vector<FileIdentity> identitiesFromText(std::string_view text);

} // namespace stackreel::shim
