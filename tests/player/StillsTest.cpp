#include "player/GStreamerStills.h"
#include "player/base/ForegroundWork.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Quarters.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <optional>
#include <thread>
#include <vector>

namespace stackreel
{

namespace
{

const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};
const MarkedClip variableRate{.name = "variable.mp4", .frames = 120, .keyInterval = 40, .variable = true};

StillRequest requestOf(const std::filesystem::path& file, const std::vector<double>& seconds,
                       double tolerance)
{
    StillRequest request{file, {}, 320, 180, MediaTime::fromSeconds(tolerance)};
    for (double time : seconds)
        request.times.push_back(MediaTime::fromSeconds(time));
    return request;
}

std::vector<Still> take(const StillRequest& request)
{
    std::vector<Still> stills;
    GStreamerStills().take(request, {}, [&stills](Still still) { stills.push_back(std::move(still)); });
    return stills;
}

std::vector<Still> take(const std::filesystem::path& file, const std::vector<double>& seconds,
                        double tolerance)
{
    return take(requestOf(file, seconds, tolerance));
}

/// The middles of twelve equal slices.
std::vector<double> twelve(double duration)
{
    std::vector<double> times;
    for (int i = 0; i < 12; ++i)
        times.push_back((i + 0.5) / 12 * duration);
    return times;
}

} // namespace

TEST(Stills, AreWithinTheToleranceOfEachTimeInOrder)
{
    for (const MarkedClip& clip : {shortInterval, longInterval, variableRate}) {
        for (double tolerance : {0.5, 0.1, 0.0}) {
            const std::vector<double> times = twelve(clip.duration());
            const auto images = take(clip.file(), times, tolerance);
            ASSERT_EQ(images.size(), times.size()) << clip.name;
            for (std::size_t i = 0; i < times.size(); ++i) {
                EXPECT_EQ(images[i].requestedTime, MediaTime::fromSeconds(times[i]));
                ASSERT_TRUE(images[i].frame.pixels) << clip.name << " at " << times[i];
                const int number = numberIn(images[i].frame);
                EXPECT_NEAR(images[i].frame.seconds, clip.startOf(number), 0.002);
                const double starts = clip.startOf(number);
                EXPECT_LE(starts, times[i] + tolerance + 0.001) << clip.name;
                // A frame lasts until the next one.
                EXPECT_GE(clip.startOf(number + 1), times[i] - tolerance - 0.001) << clip.name;
            }
        }
    }
}

TEST(Stills, AreKeyFramesWhenTheToleranceAllows)
{
    const auto images = take(shortInterval.file(), {0.3, 1.7, 4.4, 5.6, 8.2}, 0.5);
    std::vector<int> numbers;
    for (const Still& image : images)
        numbers.push_back(numberIn(image.frame));
    EXPECT_EQ(numbers, (std::vector{0, 60, 120, 180, 240}));
}

TEST(Stills, AreDecodedOnFromAKeyFrameThatWasUsed)
{
    const MarkedClip clip{
        .name = "two-key-frames.mp4", .frames = 150, .keyInterval = 250, .output = "-force_key_frames 1"};
    const auto images = take(clip.file(), {1.1, 2.1, 3.1}, 0.15);
    std::vector<int> numbers;
    for (const Still& image : images)
        numbers.push_back(image.frame.pixels ? numberIn(image.frame) : -1);
    EXPECT_EQ(numbers, (std::vector{30, 59, 89}));
}

TEST(Stills, DifferInAShortClip)
{
    const MarkedClip clip{.name = "second.mp4", .frames = 30, .keyInterval = 250};
    int last = -1;
    for (const Still& image : take(clip.file(), twelve(1), 0.5)) {
        ASSERT_TRUE(image.frame.pixels);
        EXPECT_GT(numberIn(image.frame), last);
        last = numberIn(image.frame);
    }
}

TEST(Stills, AreTakenAtTimesInAnyOrderAndRepeated)
{
    const auto images = take(longInterval.file(), {9, 1, 5, 1}, 0);
    ASSERT_EQ(images.size(), 4U);
    for (const Still& image : images)
        EXPECT_EQ(numberIn(image.frame), std::lround(image.requestedTime.seconds() * 30));
}

TEST(Stills, FollowThoseThatFailed)
{
    const auto images = take(shortInterval.file(), {-3, 1, 50}, 0.5);
    ASSERT_EQ(images.size(), 3U);
    EXPECT_FALSE(images[0].frame.pixels);
    EXPECT_TRUE(images[1].frame.pixels);
    EXPECT_FALSE(images[2].frame.pixels);
    for (const auto& file : {plainFile("text.mp4", "no film at all, only words and words and words"),
                             plainFile("empty.mp4", ""), std::filesystem::path("/nowhere/missing.mp4")}) {
        const auto none = take(file, {0, 1}, 0.5);
        ASSERT_EQ(none.size(), 2U) << file;
        EXPECT_FALSE(none[0].frame.pixels || none[1].frame.pixels) << file;
    }
    EXPECT_TRUE(take(shortInterval.file(), {}, 0.5).empty());
}

TEST(Stills, FitIntoTheSizeAndKeepTheirAspect)
{
    const MarkedClip wide{.name = "wide.mp4", .frames = 5, .size = "640x180"};
    const MarkedClip anamorphic{
        .name = "anamorphic.mp4", .frames = 5, .size = "360x288", .output = "-aspect 16:9"};
    const auto first = take(wide.file(), {0}, 0.5);
    EXPECT_EQ(first[0].frame.width, 320);
    EXPECT_EQ(first[0].frame.height, 90);
    const auto second = take(anamorphic.file(), {0}, 0.5);
    EXPECT_EQ(second[0].frame.width, 320);
    EXPECT_EQ(second[0].frame.height, 180);
    StillRequest unlimited = requestOf(wide.file(), {0}, 0.5);
    unlimited.maximumWidth = unlimited.maximumHeight = 0;
    EXPECT_EQ(take(unlimited)[0].frame.width, 640);
}

TEST(Stills, AreUpright)
{
    const MarkedClip& clip = quartersClip;
    const std::array<int, 4> stored = quarters(take(clip.file(), {0}, 0.5)[0].frame);
    int count = 0;
    for (const auto& matrix : allOrientations) {
        const auto file = rotatedCopy(clip.file(), "quarters-" + std::to_string(count++) + ".mp4", matrix);
        const VideoFrame upright = take(file, {0}, 0.5)[0].frame;
        EXPECT_EQ(upright.width, matrix[0] ? 320 : 100) << count;
        EXPECT_EQ(upright.height, 180) << count;
        for (int i = 0; i < 4; ++i) {
            const int x = i % 2 * 2 - 1;
            const int y = i / 2 * 2 - 1;
            const int column = matrix[0] * x + matrix[2] * y > 0;
            const int row = matrix[1] * x + matrix[3] * y > 0;
            EXPECT_NEAR(quarters(upright).at(static_cast<std::size_t>(2 * row + column)),
                        stored.at(static_cast<std::size_t>(i)), 3)
                << "matrix " << count << ", quarter " << i;
        }
    }
}

TEST(Stills, StopWhenAStopIsRequested)
{
    std::stop_source stop;
    int reported = 0;
    const auto request = requestOf(longInterval.file(), std::vector<double>(50, 1.0), 0);
    GStreamerStills().take(request, stop.get_token(), [&](const Still&) {
        if (++reported == 3)
            stop.request_stop();
    });
    EXPECT_EQ(reported, 3);
}

/// Four of the images lie near the damaged frame.
TEST(Stills, WaitBrieflyForWhatFollowsADamagedFrame)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "GStreamer's decoder of PNG leaks each damaged picture, and zlib is not instrumented";
#endif
    const MarkedClip clip{.name = "picture.avi", .frames = 30, .keyInterval = 1, .output = "-c:v png"};
    const auto file = corruptedCopy(clip.file(), "damaged-picture.avi",
                                    std::filesystem::file_size(clip.file()) * 3 / 10, 10);
    const auto secondsFor = [&](const std::filesystem::path& source) {
        const auto start = std::chrono::steady_clock::now();
        for (const Still& image : take(source, twelve(clip.duration()), 0.5))
            EXPECT_TRUE(image.frame.pixels) << image.requestedTime.seconds();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    // Two seconds for each of the four would be eight.
    const double usual = secondsFor(clip.file());
    EXPECT_LT(secondsFor(file), usual + 6);
}

/// decodebin drops the demuxer's error if it comes while the demuxer is being added, which is so in about
/// half of the rounds.
TEST(Stills, AreMissingForAContainerWithoutStreams)
{
    std::string movie(116, '\0');
    movie.replace(0, 16, std::string("\0\0\0\x74moov\0\0\0\x6cmvhd", 16));
    movie.replace(28, 4, std::string("\0\0\x03\xe8", 4)); // the time scale
    const TemporaryDirectory folder;
    const auto file = folder.write("empty.mp4", std::string("\0\0\0\x10"
                                                            "ftypisom\0\0\2\0",
                                                            16) +
                                                    movie);
    for (int round = 0; round < 8; ++round) {
        const auto start = std::chrono::steady_clock::now();
        const auto images = take(file, {0, 1}, 0.5);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
        ASSERT_EQ(images.size(), 2U);
        EXPECT_FALSE(images[0].frame.pixels || images[1].frame.pixels);
    }
}

TEST(Stills, WaitForAPlayerThatPreparesAFrame)
{
    std::optional<ForegroundWork> work(std::in_place);
    std::atomic<int> reported = 0;
    std::stop_source stop;
    std::thread taker([&] {
        const auto request = requestOf(longInterval.file(), {1}, 0);
        GStreamerStills().take(request, stop.get_token(), [&](const Still&) { ++reported; });
    });
    std::chrono::nanoseconds patience = std::chrono::milliseconds(300);
    waitForForegroundWork({}, patience);
    EXPECT_EQ(patience.count(), 0);
    EXPECT_EQ(reported, 0);
    work.reset();
    taker.join();
    EXPECT_EQ(reported, 1);
}

} // namespace stackreel
