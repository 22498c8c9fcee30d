#pragma once

#include "player/base/MediaTime.h"

#include <memory>

namespace stackreel
{

class PlayerLooper;
class QueuePlayer;
struct PlayerItem;

/// The host system's player, as far as it is used here. One object serves the whole program; main thread.
/// Players and loopers may outlive it.
class Playback
{
public:
    virtual ~Playback() = default;

    /// A paused player without items.
    virtual std::shared_ptr<QueuePlayer> makePlayer() = 0;
    /// Puts the range of the item on the player, and repeats it as long as the looper lives and is not
    /// disabled. The player was made by this object; the looper keeps it alive. The range may reach past the
    /// file's end, where what there is gets repeated.
    virtual std::unique_ptr<PlayerLooper> makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                                     const PlayerItem& templateItem,
                                                     MediaTimeRange range) = 0;
};

} // namespace stackreel
