#include "player/GstAssetLoader.h"
#include "player/base/ForegroundWork.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Quarters.h"

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

ImageGeneratorSettings settings(double toleranceSeconds)
{
    const MediaTime tolerance = MediaTime::fromSeconds(toleranceSeconds);
    return {true, 320, 180, tolerance, tolerance};
}

std::vector<GeneratedImage> generate(const std::filesystem::path& file, const std::vector<double>& seconds,
                                     const ImageGeneratorSettings& with)
{
    std::vector<MediaTime> times;
    for (double time : seconds)
        times.push_back(MediaTime::fromSeconds(time));
    std::vector<GeneratedImage> images;
    GstAssetLoader().makeImageGenerator(file, with)->generate(times, {}, [&images](GeneratedImage image) {
        images.push_back(std::move(image));
    });
    return images;
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

TEST(ImageGenerator, MakesAnImageWithinTheToleranceOfEachTimeInOrder)
{
    for (const MarkedClip& clip : {shortInterval, longInterval, variableRate}) {
        for (double tolerance : {0.5, 0.1, 0.0}) {
            const std::vector<double> times = twelve(clip.duration());
            const auto images = generate(clip.file(), times, settings(tolerance));
            ASSERT_EQ(images.size(), times.size()) << clip.name;
            for (std::size_t i = 0; i < times.size(); ++i) {
                EXPECT_EQ(images[i].requestedTime, MediaTime::fromSeconds(times[i]));
                ASSERT_TRUE(images[i].frame.pixels) << clip.name << " at " << times[i];
                const int number = numberIn(images[i].frame);
                EXPECT_NEAR(images[i].actualTime.seconds(), clip.startOf(number), 0.002);
                const double starts = clip.startOf(number);
                EXPECT_LE(starts, times[i] + tolerance + 0.001) << clip.name;
                // A frame lasts until the next one.
                EXPECT_GE(clip.startOf(number + 1), times[i] - tolerance - 0.001) << clip.name;
            }
        }
    }
}

TEST(ImageGenerator, UsesKeyFramesWhenTheToleranceAllows)
{
    const auto images = generate(shortInterval.file(), {0.3, 1.7, 4.4, 5.6, 8.2}, settings(0.5));
    std::vector<int> numbers;
    for (const GeneratedImage& image : images)
        numbers.push_back(numberIn(image.frame));
    EXPECT_EQ(numbers, (std::vector{0, 60, 120, 180, 240}));
}

TEST(ImageGenerator, DecodesOnFromAKeyFrameThatItHasUsed)
{
    const MarkedClip clip{
        .name = "two-key-frames.mp4", .frames = 150, .keyInterval = 250, .output = "-force_key_frames 1"};
    const auto images = generate(clip.file(), {1.1, 2.1, 3.1}, settings(0.15));
    std::vector<int> numbers;
    for (const GeneratedImage& image : images)
        numbers.push_back(image.frame.pixels ? numberIn(image.frame) : -1);
    EXPECT_EQ(numbers, (std::vector{30, 59, 89}));
}

TEST(ImageGenerator, MakesDifferentImagesOfAShortClip)
{
    const MarkedClip clip{.name = "second.mp4", .frames = 30, .keyInterval = 250};
    int last = -1;
    for (const GeneratedImage& image : generate(clip.file(), twelve(1), settings(0.5))) {
        ASSERT_TRUE(image.frame.pixels);
        EXPECT_GT(numberIn(image.frame), last);
        last = numberIn(image.frame);
    }
}

TEST(ImageGenerator, AcceptsTimesInAnyOrderAndRepeated)
{
    const auto images = generate(longInterval.file(), {9, 1, 5, 1}, settings(0));
    ASSERT_EQ(images.size(), 4U);
    for (const GeneratedImage& image : images)
        EXPECT_EQ(numberIn(image.frame), std::lround(image.requestedTime.seconds() * 30));
}

TEST(ImageGenerator, ReportsFailedTimesAndContinues)
{
    const auto images = generate(shortInterval.file(), {-3, 1, 50}, settings(0.5));
    ASSERT_EQ(images.size(), 3U);
    EXPECT_FALSE(images[0].frame.pixels);
    EXPECT_TRUE(images[1].frame.pixels);
    EXPECT_FALSE(images[2].frame.pixels);
    for (const auto& file : {plainFile("text.mp4", "no film at all, only words and words and words"),
                             plainFile("empty.mp4", ""), std::filesystem::path("/nowhere/missing.mp4")}) {
        const auto none = generate(file, {0, 1}, settings(0.5));
        ASSERT_EQ(none.size(), 2U) << file;
        EXPECT_FALSE(none[0].frame.pixels || none[1].frame.pixels) << file;
    }
    EXPECT_TRUE(generate(shortInterval.file(), {}, settings(0.5)).empty());
}

TEST(ImageGenerator, FitsImagesIntoTheSizeAndKeepsTheirAspect)
{
    const MarkedClip wide{.name = "wide.mp4", .frames = 5, .size = "640x180"};
    const MarkedClip anamorphic{
        .name = "anamorphic.mp4", .frames = 5, .size = "360x288", .output = "-aspect 16:9"};
    const auto first = generate(wide.file(), {0}, settings(0.5));
    EXPECT_EQ(first[0].frame.width, 320);
    EXPECT_EQ(first[0].frame.height, 90);
    const auto second = generate(anamorphic.file(), {0}, settings(0.5));
    EXPECT_EQ(second[0].frame.width, 320);
    EXPECT_EQ(second[0].frame.height, 180);
    ImageGeneratorSettings unlimited = settings(0.5);
    unlimited.maximumWidth = unlimited.maximumHeight = 0;
    EXPECT_EQ(generate(wide.file(), {0}, unlimited)[0].frame.width, 640);
}

TEST(ImageGenerator, AppliesTheOrientationWhenRequested)
{
    const MarkedClip& clip = quartersClip;
    const std::array<int, 4> stored = quarters(generate(clip.file(), {0}, settings(0.5))[0].frame);
    int count = 0;
    for (const auto& matrix : allOrientations) {
        const auto file = rotatedCopy(clip.file(), "quarters-" + std::to_string(count++) + ".mp4", matrix);
        const VideoFrame upright = generate(file, {0}, settings(0.5))[0].frame;
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
        ImageGeneratorSettings asStored = settings(0.5);
        asStored.appliesPreferredTransform = false;
        EXPECT_EQ(generate(file, {0}, asStored)[0].frame.width, 320) << count;
    }
}

TEST(ImageGenerator, StopsBetweenImagesWhenAStopIsRequested)
{
    std::stop_source stop;
    int reported = 0;
    std::vector<MediaTime> times(50, MediaTime::fromSeconds(1));
    GstAssetLoader()
        .makeImageGenerator(longInterval.file(), settings(0))
        ->generate(times, stop.get_token(), [&](GeneratedImage) {
            if (++reported == 3)
                stop.request_stop();
        });
    EXPECT_EQ(reported, 3);
}

/// Four of the images lie near the damaged frame.
TEST(ImageGenerator, WaitsBrieflyForWhatFollowsADamagedFrame)
{
    const MarkedClip clip{.name = "picture.avi", .frames = 30, .keyInterval = 1, .output = "-c:v png"};
    const auto file = corruptedCopy(clip.file(), "damaged-picture.avi",
                                    std::filesystem::file_size(clip.file()) * 3 / 10, 10);
    const auto start = std::chrono::steady_clock::now();
    const auto images = generate(file, twelve(clip.duration()), settings(0.5));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    for (const GeneratedImage& image : images)
        EXPECT_TRUE(image.frame.pixels) << image.requestedTime.seconds();
}

TEST(ImageGenerator, WaitsForAPlayerThatPreparesAFrame)
{
    std::optional<ForegroundWork> work(std::in_place);
    std::atomic<int> reported = 0;
    std::stop_source stop;
    std::thread generator([&] {
        GstAssetLoader()
            .makeImageGenerator(longInterval.file(), settings(0))
            ->generate({MediaTime::fromSeconds(1)}, stop.get_token(), [&](GeneratedImage) { ++reported; });
    });
    std::chrono::nanoseconds patience = std::chrono::milliseconds(300);
    waitForForegroundWork({}, patience);
    EXPECT_EQ(patience.count(), 0);
    EXPECT_EQ(reported, 0);
    work.reset();
    generator.join();
    EXPECT_EQ(reported, 1);
}

} // namespace stackreel
