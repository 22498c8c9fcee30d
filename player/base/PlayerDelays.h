#pragma once

#include <chrono>

namespace stackreel
{

/// How long a player keeps what it does not use at the moment, and waits for what failed. Tests shorten it.
struct PlayerDelays {
    /// Until the decoders, the file and the sound device are released.
    std::chrono::milliseconds idle{3000};
    /// Between two attempts to open a sound device that failed.
    std::chrono::milliseconds soundRetry{2000};
};

} // namespace stackreel
