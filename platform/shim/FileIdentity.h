#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel::shim
{

/// Which file a path leads to, whatever it is called: links to one file are equal, copies of it are not.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// The file behind `path`, links followed; nothing where it does not exist or cannot be asked about.
std::optional<FileIdentity> identityOf(const std::string& path);

/// Identities as a text for an environment variable: "device:inode" in decimal, joined by commas.
std::string identitiesText(const std::vector<FileIdentity>& identities);

/// Reads such a text back. Pieces of any other shape are left out, since anybody may write to an environment.
std::vector<FileIdentity> identitiesFromText(std::string_view text);

} // namespace stackreel::shim
