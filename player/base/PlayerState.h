#pragma once

#include <string>

namespace stackreel
{

/// What a player is doing.
struct PlayerState {
    enum class Kind {
        empty,   ///< no file is open
        waiting, ///< a frame was requested and is not on screen yet, or playback is about to start
        paused,
        playing,
        failed, ///< the file shows nothing; the next `seek`, `play` or `open` opens it again
    };

    Kind kind = Kind::empty;
    std::string reason; ///< why it failed, in the media framework's words; empty in every other state

    bool operator==(const PlayerState&) const = default;
};

} // namespace stackreel
