#pragma once

#include "player/Playback.h"
#include "player/sound/SoundOutput.h"

namespace stackreel
{

/// Playback by GStreamer. Cheap to make; GStreamer itself is prepared on the players' threads.
class GstPlayback : public Playback
{
public:
    /// The players' sound ends in what `makeSoundSink` makes, on threads of the players'.
    explicit GstPlayback(MakeSoundSink makeSoundSink = makeSystemSoundSink)
        : m_makeSoundSink(std::move(makeSoundSink))
    {
    }

    std::shared_ptr<QueuePlayer> makePlayer() override;
    std::unique_ptr<PlayerLooper> makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                             const PlayerItem& templateItem, MediaTimeRange range) override;

private:
    MakeSoundSink m_makeSoundSink;
};

} // namespace stackreel
