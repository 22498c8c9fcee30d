#pragma once

#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"
#include "tests/player/PictureOutput.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace stackreel
{

/// The size at which the tests of colours show pictures, in pixels.
inline constexpr int previewWidth = 320;
inline constexpr int previewHeight = 180;

/// The first `count` pictures that the player shows of a clip of half a second or more.
inline std::vector<VideoFrame> played(const std::filesystem::path& file, std::size_t count)
{
    const auto player = std::make_shared<GStreamerPlayer>();
    const auto output = std::make_shared<PictureOutput>();
    player->setMuted(true);
    player->setVideoOutput(output);
    player->setVideoSize(previewWidth, previewHeight);
    player->open(file, {MediaTime::fromSeconds(0), MediaTime::fromSeconds(0.5)});
    player->play();
    EXPECT_TRUE(eventually([&] { return output->pictures().size() >= count; }));
    std::vector<VideoFrame> pictures = output->pictures();
    pictures.resize(count);
    return pictures;
}

/// The thumbnail at a time in seconds.
inline VideoFrame thumbnail(const std::filesystem::path& file, double seconds)
{
    VideoFrame taken;
    GStreamerStills().take(
        {file, {MediaTime::fromSeconds(seconds)}, previewWidth, previewHeight, MediaTime::fromSeconds(0)}, {},
        [&](const Still& still) { taken = still.frame; });
    return taken;
}

} // namespace stackreel
