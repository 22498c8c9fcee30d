#include "player/GstAssetLoader.h"
#include "tests/player/BrokenSound.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace stackreel
{

namespace
{

/// The asset's answer; none when it throws.
std::optional<bool> playable(const std::filesystem::path& file)
{
    try {
        return GstAssetLoader().open(file)->isPlayable({});
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

std::optional<int> videoTracks(const std::filesystem::path& file)
{
    try {
        return GstAssetLoader().open(file)->videoTrackCount({});
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

} // namespace

TEST(Asset, ReportsPlayabilityAndTheNumberOfVideoTracks)
{
    const MarkedClip plain{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    const MarkedClip clipWithSound{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};
    const MarkedClip specialName{.name = "-a 'b' %20#ü視.mp4", .frames = 5};
    const MarkedClip soundOnly{
        .name = "sound-only.m4a", .frames = 30, .sound = true, .output = "-map 1:a -t 1"};
    const struct {
        std::filesystem::path file;
        std::optional<bool> playable;
        std::optional<int> videoTracks;
    } rows[] = {
        {plain.file(), true, 1},
        {clipWithSound.file(), true, 1},
        {specialName.file(), true, 1},
        {soundOnly.file(), true, 0},
        {plainFile("text.mp4", "no film at all, only words and words and words"), std::nullopt, std::nullopt},
        {plainFile("empty.mp4", ""), std::nullopt, std::nullopt},
        {"/nowhere/missing.mp4", std::nullopt, std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(playable(row.file), row.playable) << row.file;
        EXPECT_EQ(videoTracks(row.file), row.videoTracks) << row.file;
    }
}

TEST(Asset, IsPlayableWithoutSoundWhenItsSoundIsBroken)
{
    for (const auto& file : clipsOfBrokenSound()) {
        EXPECT_EQ(playable(file), true) << file;
        EXPECT_EQ(videoTracks(file), 1) << file;
    }
}

TEST(Asset, IsNotPlayableWithoutAVideoDecoder)
{
    // The new name is a codec without a decoder.
    const MarkedClip clip{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    EXPECT_EQ(playable(renamedCodec(clip.file(), "unknown-codec.mp4", "avc1", "ZYGO")), false);
}

TEST(Asset, IsNotPlayableWhereOnlyALibavDemuxerReadsIt)
{
    // The libav demuxer does not stop at the end of a GIF file.
    const MarkedClip animation{.name = "animation.gif", .frames = 5, .output = "-c:v gif -pix_fmt rgb8"};
    EXPECT_FALSE(playable(animation.file()).value_or(false) && videoTracks(animation.file()).value_or(0) > 0);
}

TEST(Asset, IsJudgedWithinFiveSecondsWhenItsFileIsCutShort)
{
    const MarkedClip clip{.name = "short.mov", .frames = 36, .keyInterval = 30, .sound = true};
    const std::uintmax_t size = std::filesystem::file_size(clip.file());
    for (std::uintmax_t tenths : {4U, 8U}) {
        const auto asset = GstAssetLoader().open(truncatedCopy(clip.file(), "cut.mov", size * tenths / 10));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_THROW(asset->isPlayable({}), std::runtime_error);
        EXPECT_THROW(asset->videoTrackCount({}), std::runtime_error);
        const auto taken = std::chrono::steady_clock::now() - start;
        EXPECT_LT(taken, std::chrono::seconds(6)) << "with a second for a busy machine; " << tenths;
    }
}

TEST(Asset, ThrowsWhenAStopIsRequested)
{
    const MarkedClip clip{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    std::stop_source stop;
    stop.request_stop();
    const auto asset = GstAssetLoader().open(clip.file());
    EXPECT_THROW(asset->isPlayable(stop.get_token()), std::runtime_error);
    EXPECT_TRUE(asset->isPlayable({}));
}

TEST(Asset, AnswersSoonAfterAStopIsRequestedAtAnyMoment)
{
    const MarkedClip clip{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};
    const auto file = clip.file();
    for (int i = 0; i < 100; ++i) {
        std::stop_source stop;
        std::packaged_task<void()> ask([file, token = stop.get_token()] {
            try {
                GstAssetLoader().open(file)->isPlayable(token);
            } catch (const std::runtime_error&) {
                // It was stopped.
            }
        });
        std::future<void> answered = ask.get_future();
        std::thread thread(std::move(ask));
        std::this_thread::sleep_for(std::chrono::microseconds(i * 300));
        stop.request_stop();
        const bool ended = answered.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
        ended ? thread.join() : thread.detach();
        ASSERT_TRUE(ended) << "stopped after " << i * 0.3 << " ms";
    }
}

} // namespace stackreel
