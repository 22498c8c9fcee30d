#pragma once

#include <cstdint>

namespace stackreel
{

/// Identifies a file independent of its name. Two links to one file have the same identity; a copy has
/// another one. The system may give the identity of a deleted file to a new one, unless the deleted file is
/// still open.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

} // namespace stackreel
