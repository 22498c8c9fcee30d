#pragma once

#include "player/base/Nanoseconds.h"
#include "player/loop/LoopRange.h"
#include "player/pictures/PictureSize.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// The state that a player is asked to be in, as a whole. Each call changes a part of it, and the engine
/// applies the whole. So calls never queue up, and the latest value counts.
struct PlayerRequest {
    struct Loop {
        std::filesystem::path file;
        LoopRange range;
        std::uint64_t number = 0; ///< different for each call of `open`
    };
    struct Seek {
        Nanoseconds time = 0;
        std::uint64_t number = 0; ///< different for each seek
    };

    std::optional<Loop> loop;
    Seek seek; ///< the last one requested
    bool playing = false;
    bool muted = false;
    bool quit = false;
    PictureSize box = {960, 540};
};

} // namespace stackreel
