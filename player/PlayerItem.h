#pragma once

#include <filesystem>

namespace stackreel
{

/// A file to be played; a template for the copies that a looper queues. A plain value.
struct PlayerItem {
    std::filesystem::path file; ///< absolute

    bool operator==(const PlayerItem&) const = default;
};

} // namespace stackreel
