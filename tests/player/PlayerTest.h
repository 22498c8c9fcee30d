#pragma once

#include "player/GStreamerPlayer.h"
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
        player->setMuted(true);
        player->setVideoOutput(output);
    }

    static MediaTime at(double seconds) { return MediaTime::fromSeconds(seconds); }
    static MediaTimeRange range(double start, double end) { return {at(start), at(end - start)}; }

    void loop(const std::filesystem::path& file, double start, double end)
    {
        player->open(file, range(start, end));
    }
    void seek(double seconds) { player->seek(at(seconds)); }
    /// Opens the range as the model does when a trim handle is released.
    void reopen(const std::filesystem::path& file, double start, double end, double position)
    {
        loop(file, start, end);
        seek(position);
        player->play();
    }

    std::shared_ptr<PreviewPlayer> player = std::make_shared<GStreamerPlayer>();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
};

} // namespace stackreel
