#pragma once

#include "player/QueuePlayer.h"
#include "player/base/Nanoseconds.h"
#include "player/loop/LoopRange.h"
#include "player/pictures/PictureSize.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// What a player is to do, as a whole: whoever gives an order changes what stands, and the player brings
/// itself in line with what it finds. So orders never queue up, and the latest of a kind counts.
struct PlayerOrders {
    struct Loop {
        std::filesystem::path file;
        LoopRange range;
        std::uint64_t number = 0; ///< tells loops apart
        bool repeating = true;
    };
    struct Seek {
        Nanoseconds time = 0;
        std::uint64_t number = 0; ///< tells seeks apart
    };

    std::optional<Loop> loop;
    Seek seek; ///< the last one asked for
    bool playing = false;
    bool muted = false;
    bool quit = false;
    QueuePlayer::ActionAtItemEnd atEnd = QueuePlayer::ActionAtItemEnd::advance;
    PictureSize box = {960, 540};
};

} // namespace stackreel
