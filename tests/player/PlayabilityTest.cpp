#include "player/GStreamerStills.h"
#include "tests/player/BrokenSound.h"
#include "tests/player/MarkedClip.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace stackreel
{

namespace
{

bool isPlayable(const std::filesystem::path& file, std::stop_token stop = {})
{
    return GStreamerStills().isPlayable(file, std::move(stop));
}

} // namespace

TEST(Playability, IsThatOfFilesWithVideo)
{
    const MarkedClip plain{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    const MarkedClip clipWithSound{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};
    const MarkedClip specialName{.name = "-a 'b' %20#ü視.mp4", .frames = 5};
    const MarkedClip soundOnly{
        .name = "sound-only.m4a", .frames = 30, .sound = true, .output = "-map 1:a -t 1"};
    const struct {
        std::filesystem::path file;
        bool playable;
    } rows[] = {
        {plain.file(), true},
        {clipWithSound.file(), true},
        {specialName.file(), true},
        {soundOnly.file(), false},
        {plainFile("text.mp4", "no film at all, only words and words and words"), false},
        {plainFile("empty.mp4", ""), false},
        {"/nowhere/missing.mp4", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isPlayable(row.file), row.playable) << row.file;
}

TEST(Playability, HoldsWithoutSoundWhenTheSoundIsBroken)
{
    for (const auto& file : clipsOfBrokenSound())
        EXPECT_TRUE(isPlayable(file)) << file;
}

TEST(Playability, NeedsAVideoDecoder)
{
    // The new name is a codec without a decoder.
    const MarkedClip clip{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    EXPECT_FALSE(isPlayable(renamedCodec(clip.file(), "unknown-codec.mp4", "avc1", "ZYGO")));
}

TEST(Playability, NeedsADemuxerBesidesLibavs)
{
    // The libav demuxer does not stop at the end of a GIF file.
    const MarkedClip animation{.name = "animation.gif", .frames = 5, .output = "-c:v gif -pix_fmt rgb8"};
    EXPECT_FALSE(isPlayable(animation.file()));
}

TEST(Playability, IsDecidedWithinFiveSecondsWhenTheFileIsTruncated)
{
    const MarkedClip clip{.name = "short.mov", .frames = 36, .keyInterval = 30, .sound = true};
    const std::uintmax_t size = std::filesystem::file_size(clip.file());
    for (std::uintmax_t tenths : {4U, 8U}) {
        const auto file = truncatedCopy(clip.file(), "cut.mov", size * tenths / 10);
        // The limit itself is tested, so there is no event to wait for.
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(isPlayable(file));
        const auto taken = std::chrono::steady_clock::now() - start;
        EXPECT_LT(taken, std::chrono::seconds(15)) << "with ten seconds for a busy machine; " << tenths;
    }
}

TEST(Playability, IsDeniedWhenAStopIsRequested)
{
    const MarkedClip clip{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(isPlayable(clip.file(), stop.get_token()));
    EXPECT_TRUE(isPlayable(clip.file()));
}

TEST(Playability, IsDecidedSoonAfterAStopIsRequestedAtAnyMoment)
{
    const MarkedClip clip{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};
    const auto file = clip.file();
    for (int i = 0; i < 100; ++i) {
        std::stop_source stop;
        std::packaged_task<void()> ask([file, token = stop.get_token()] { isPlayable(file, token); });
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
