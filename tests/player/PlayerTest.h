#pragma once

#include "player/GstPlayback.h"
#include "player/PlayerItem.h"
#include "player/PlayerLooper.h"
#include "player/QueuePlayer.h"
#include "tests/player/CollectingOutput.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace stackreel
{

inline const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};
inline const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};

/// A muted player whose frames are recorded.
class PlayerTest : public testing::Test
{
protected:
    PlayerTest()
    {
        player->setActionAtItemEnd(QueuePlayer::ActionAtItemEnd::none);
        player->setMuted(true);
        player->setVideoOutput(output);
    }

    static MediaTime at(double seconds) { return MediaTime::fromSeconds(seconds); }
    static MediaTimeRange range(double start, double end) { return {at(start), at(end - start)}; }

    void loop(const std::filesystem::path& file, double start, double end)
    {
        looper = playback.makeLooper(player, PlayerItem{file}, range(start, end));
    }
    /// Seeks with zero tolerance.
    void seek(double seconds) { player->seek(at(seconds), {}, {}); }
    /// Rebuilds the loop as the model does when a trim handle is released.
    void rebuild(const std::filesystem::path& file, double start, double end, double position)
    {
        looper->disableLooping();
        looper.reset();
        player->removeAllItems();
        loop(file, start, end);
        seek(position);
        player->play();
    }

    GstPlayback playback;
    std::shared_ptr<QueuePlayer> player = playback.makePlayer();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    std::unique_ptr<PlayerLooper> looper;
};

} // namespace stackreel
