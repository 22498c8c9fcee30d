#pragma once

#include "benchmarks/player/RecordingOutput.h"
#include "player/GstPlayback.h"
#include "player/PlayerItem.h"
#include "player/PlayerLooper.h"
#include "player/QueuePlayer.h"

#include <filesystem>
#include <memory>

namespace stackreel
{

/// A muted, paused player for a range of a clip, and a recording of each frame that it shows.
struct PreviewedClip {
    PreviewedClip(const std::filesystem::path& file, double start, double end, int width, int height)
    {
        player->setActionAtItemEnd(QueuePlayer::ActionAtItemEnd::none);
        player->setMuted(true);
        player->setVideoOutput(output);
        player->setVideoSize(width, height);
        looper = playback.makeLooper(player, PlayerItem{file},
                                     {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
    }

    void seek(double seconds) const { player->seek(MediaTime::fromSeconds(seconds), {}, {}); }

    GstPlayback playback;
    std::shared_ptr<QueuePlayer> player = playback.makePlayer();
    std::shared_ptr<RecordingOutput> output = std::make_shared<RecordingOutput>();
    std::unique_ptr<PlayerLooper> looper;
};

} // namespace stackreel
