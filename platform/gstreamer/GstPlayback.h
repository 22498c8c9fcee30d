#pragma once

#include "platform/playback/Playback.h"

namespace stackreel
{

/// Playback by GStreamer. Cheap to make; GStreamer itself is prepared on the players' threads.
class GstPlayback : public Playback
{
public:
    std::shared_ptr<QueuePlayer> makePlayer() override;
    std::unique_ptr<PlayerLooper> makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                             const PlayerItem& templateItem, MediaTimeRange range) override;
};

} // namespace stackreel
