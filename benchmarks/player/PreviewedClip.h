#pragma once

#include "benchmarks/player/RecordingOutput.h"
#include "player/GStreamerPlayer.h"

#include <filesystem>
#include <memory>

namespace stackreel
{

/// A muted, paused player for a range of a clip, and a recording of each frame that it shows.
struct PreviewedClip {
    PreviewedClip(const std::filesystem::path& file, double start, double end, int width, int height)
    {
        player->setMuted(true);
        player->setVideoOutput(output);
        player->setVideoSize(width, height);
        player->open(file, {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
    }

    void seek(double seconds) const { player->seek(MediaTime::fromSeconds(seconds)); }

    std::shared_ptr<PreviewPlayer> player = std::make_shared<GStreamerPlayer>();
    std::shared_ptr<RecordingOutput> output = std::make_shared<RecordingOutput>();
};

} // namespace stackreel
