#include "player/pictures/FrameReader.h"

#include "tests/player/ExportedFrame.h"
#include "tests/player/FrameReading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace stackreel
{

namespace
{

std::vector<int> countedUp(int from, int to)
{
    std::vector<int> numbers;
    for (int i = from; i < to; ++i)
        numbers.push_back(i);
    return numbers;
}

const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};
const MarkedClip variableRate{.name = "variable.mp4", .frames = 120, .keyInterval = 40, .variable = true};

} // namespace

TEST(FrameReader, ReadsEveryFrameFromTheBeginning)
{
    for (const MarkedClip& clip : {longInterval, variableRate}) {
        Reading reading(clip.file());
        reading.reader.showFrom(0);
        EXPECT_EQ(reading.all(), countedUp(0, clip.frames)) << clip.name;
    }
}

TEST(FrameReader, ShowsTheFrameAtATime)
{
    const struct {
        const MarkedClip& clip;
        double seconds;
        int number;
    } rows[] = {
        {longInterval, 0, 0},
        {longInterval, 0.5, 15},
        {longInterval, 0.5 + 0.03, 15},
        {longInterval, 0.5 - 0.0017, 14}, // 1/600 s before frame 15
        {longInterval, 8.3, 249},
        {longInterval, 8.334, 250},
        {longInterval, 9.99, 299},
        {longInterval, 10, 299},
        {longInterval, 50, 299},
        {variableRate, variableRate.startOf(31), 31},
        {variableRate, variableRate.startOf(32) - 0.002, 31},
        {variableRate, variableRate.startOf(100) + 0.005, 100},
    };
    Reading fixedRate(longInterval.file());
    Reading changingRate(variableRate.file());
    for (const auto& row : rows) {
        Reading& reading = &row.clip == &longInterval ? fixedRate : changingRate;
        reading.reader.showFrom(fromSeconds(row.seconds));
        EXPECT_EQ(reading.next(), row.number) << row.clip.name << " at " << row.seconds;
        EXPECT_NEAR(toSeconds(reading.frame->time), row.clip.startOf(row.number), 1e-4);
        const int following = row.number + 1 < row.clip.frames ? row.number + 1 : -1;
        EXPECT_EQ(reading.next(), following) << row.clip.name << " at " << row.seconds;
    }
}

TEST(FrameReader, UsesTheExportsTimesWhereverAFileBegins)
{
    // FFmpeg itself seeks inexactly in a transport stream, except shortly after a key frame, and at the
    // beginning of a Flash file. The rows leave those times out.
    const struct {
        const char* extension;
        std::vector<double> times;
        std::vector<bool> sound;
    } rows[] = {{"mp4", {0, 0.51, 2.01, 3.51}, {false, true}},
                {"mkv", {0, 0.51, 2.01, 3.51}, {false, true}},
                {"flv", {0.51, 2.01, 3.51}, {false, true}},
                {"ts", {0, 2.01}, {false, true}}};
    for (const auto& row : rows) {
        for (bool sound : row.sound) {
            const MarkedClip clip{.name =
                                      std::string(sound ? "begins-with-sound." : "begins.") + row.extension,
                                  .frames = 120,
                                  .keyInterval = 30,
                                  .sound = sound};
            Reading reading(clip.file());
            for (double time : row.times) {
                reading.reader.showFrom(fromSeconds(time));
                const int shown = reading.next();
                // FFmpeg returns the first frame that starts at or after the time, the reader the one on
                // screen then.
                const int exported = numberIn(exportedFrame(clip.file(), time, 320, 180));
                EXPECT_GE(shown, exported - 1) << clip.name << " at " << time;
                EXPECT_LE(shown, exported) << clip.name << " at " << time;
            }
        }
    }
}

TEST(FrameReader, DoesNotWaitForSoundThatBeginsLongAfterTheVideo)
{
    const MarkedClip clip{
        .name = "late-sound.mp4",
        .frames = 120,
        .keyInterval = 30,
        .sound = true,
        .output = "-bsf:v setts=pts=PTS+9000:dts=DTS+9000 -bsf:a setts=pts=PTS+384000:dts=DTS+384000"};
    Reading reading(clip.file());
    EXPECT_EQ(reading.next(), 0);
    EXPECT_EQ(reading.next(), 1);
}

TEST(FrameReader, ContinuesAfterATime)
{
    Reading reading(longInterval.file());
    reading.reader.continueAfter(fromSeconds(1));
    EXPECT_EQ(reading.next(), 31);
    EXPECT_EQ(reading.next(), 32);
    reading.reader.continueAfter(fromSeconds(299 / 30.0));
    EXPECT_EQ(reading.next(), -1);
}

TEST(FrameReader, StopsAfterASingleKeyFrame)
{
    Reading reading(longInterval.file());
    EXPECT_EQ(reading.next(), 0);
    reading.reader.showKeyFrame(fromSeconds(250 / 30.0));
    EXPECT_EQ(reading.next(), 250);
    EXPECT_EQ(reading.next(), -1);
    reading.reader.showFrom(fromSeconds(251 / 30.0));
    EXPECT_EQ(reading.next(), 251);
    EXPECT_EQ(reading.next(), 252);
}

TEST(FrameReader, DecodesOnWhenTheTimeOnItsWayIsRequestedAgain)
{
    WakeUp wakeUp;
    FrameReader reader(longInterval.file(), {320, 180}, [&wakeUp] { wakeUp.notify(); });
    const Nanoseconds time = fromSeconds(8.3);
    reader.showFrom(time);
    int decoded = 0;
    PlanarFramePtr frame;
    for (auto step = reader.step(frame); step != FrameReader::Step::frame; step = reader.step(frame)) {
        ASSERT_LT(decoded, 270) << "decodes from the key frame again";
        if (step == FrameReader::Step::waiting)
            wakeUp.wait(reader.deadline());
        else if (++decoded == 150)
            reader.showFrom(time);
    }
    EXPECT_NEAR(toSeconds(frame->time), 8.3, 1e-3);
}

TEST(FrameReader, ContinuesBehindTheLastFrameAfterARelease)
{
    Reading reading(longInterval.file());
    EXPECT_EQ(reading.next(), 0);
    const Nanoseconds claimed = reading.reader.claimedDuration();
    reading.reader.releaseDecoder();
    EXPECT_EQ(reading.reader.claimedDuration(), claimed);
    EXPECT_EQ(reading.next(), 1);
    reading.reader.showFrom(fromSeconds(9));
    reading.reader.releaseDecoder();
    EXPECT_EQ(reading.next(), 270);
    EXPECT_EQ(reading.next(), 271);
    reading.reader.releaseDecoder();
    reading.reader.decodeOnTo(fromSeconds(1));
    EXPECT_EQ(reading.next(), 30);
    reading.reader.releaseDecoder();
    reading.reader.releaseDecoder();
    EXPECT_TRUE(reading.reader.isReleased());
    reading.reader.continueAfter(fromSeconds(8.5));
    EXPECT_EQ(reading.next(), 256);
}

TEST(FrameReader, ContinuesWhenTheExpectedKeyFrameDoesNotExist)
{
    Reading reading(longInterval.file());
    EXPECT_EQ(reading.next(), 0);
    reading.reader.showKeyFrame(fromSeconds(280 / 30.0)); // the last key frame is number 250
    EXPECT_EQ(reading.next(), 250);
    reading.reader.decodeOnTo(fromSeconds(280 / 30.0));
    EXPECT_EQ(reading.next(), 280);
    EXPECT_EQ(reading.next(), 281);
}

TEST(FrameReader, ReadsToTheEndOfATruncatedFile)
{
    const MarkedClip clip{
        .name = "front.mp4", .frames = 120, .keyInterval = 30, .output = "-movflags +faststart"};
    const auto size = std::filesystem::file_size(clip.file());
    Reading reading(truncatedCopy(clip.file(), "front-truncated.mp4", size / 2));
    reading.reader.showFrom(0);
    const std::vector<int> numbers = reading.all();
    ASSERT_GT(numbers.size(), 10U);
    EXPECT_LT(numbers.size(), 120U);
    EXPECT_EQ(numbers, countedUp(0, static_cast<int>(numbers.size())));
    // Seeking still works after the early end.
    reading.reader.showFrom(fromSeconds(0.5));
    EXPECT_EQ(reading.next(), 15);
    reading.reader.showFrom(fromSeconds(3.9));
    EXPECT_GT(reading.next(), 10);
}

TEST(FrameReader, ContinuesAfterACorruptPart)
{
    const MarkedClip clip{.name = "whole.mp4", .frames = 120, .keyInterval = 30};
    const auto size = std::filesystem::file_size(clip.file());
    Reading reading(corruptedCopy(clip.file(), "spoiled.mp4", size / 3, size / 8));
    reading.reader.showFrom(0);
    int last = -1;
    for (int number : reading.all())
        last = number;
    EXPECT_EQ(last, 119);
}

TEST(FrameReader, FailsForAFileWithoutFrames)
{
    const std::filesystem::path files[] = {
        plainFile("empty.mp4", ""),
        plainFile("text.mp4", "no film at all, only words and words and words"),
        plainFile("garbage.mp4", std::string(300'000, '\x47')),
        std::filesystem::path(STACKREEL_CLIP_DIRECTORY) / "missing.mp4",
        MarkedClip{.name = "sound-only.m4a", .frames = 30, .sound = true, .output = "-map 1:a -t 1"}.file(),
    };
    for (const auto& file : files) {
        Reading reading(file);
        reading.reader.showFrom(fromSeconds(0.5));
        EXPECT_EQ(reading.next(), -2) << file;
    }
}

TEST(FrameReader, FindsFramesAroundAKeyFrameThatSoundOverlaps)
{
    const MarkedClip clip{.name = "sounding30.mp4", .frames = 200, .keyInterval = 30, .sound = true};
    Reading reading(clip.file());
    ASSERT_EQ(reading.next(), 0);
    for (int number : {120, 119, 118, 150, 180, 179, 61, 60, 59}) {
        reading.reader.showFrom(fromSeconds(number / 30.0));
        EXPECT_EQ(reading.next(), number);
        EXPECT_EQ(reading.next(), number + 1);
    }
}

} // namespace stackreel
