#pragma once

#include <chrono>

namespace stackreel
{

/// How long a player keeps what it does not use at the moment. Tests shorten it.
struct PlayerDelays {
    /// Until the pictures' decoder and the file are released.
    std::chrono::milliseconds idle{3000};
};

} // namespace stackreel
