#include "tests/player/LoopFeeding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

constexpr std::size_t smallBudget = 10 * 320 * 180 * 3 / 2;

const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};
const MarkedClip fast{.name = "fast.mp4", .frames = 300, .rate = 60, .keyInterval = 250};
const MarkedClip variableRate{.name = "variable.mp4", .frames = 120, .keyInterval = 40, .variable = true};
const MarkedClip clipWithSound{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};

/// The numbers of the frames on screen during a range.
std::vector<int> framesOf(const MarkedClip& clip, double start, double end)
{
    std::vector<int> numbers;
    for (int number = 0; number < clip.frames; ++number) {
        const double gone = number + 1 < clip.frames ? clip.startOf(number + 1) : clip.duration();
        if (gone > start + 0.0009 && clip.startOf(number) < end - 0.0009)
            numbers.push_back(number);
    }
    return numbers;
}

struct Row {
    const MarkedClip& clip;
    double start;
    double end;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.clip.name << " from " << row.start << " to " << row.end;
}

class EveryLoop : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(EveryLoop, RepeatsEachFrameAtItsTimeWithAnyBudget)
{
    const auto& [clip, start, end] = GetParam();
    const std::vector<int> expected = framesOf(clip, start, end);
    for (std::size_t budget : {largeBudget, smallBudget, std::size_t{0}}) {
        Feeding feeding(clip.file(), rangeOf(start, end), budget);
        feeding.feeder.beginAt(fromSeconds(start));
        for (int run = 0; run < 4; ++run) {
            const double begins = run * (std::min(end, clip.duration()) - start);
            for (int number : expected) {
                const std::optional<QueuedFrame> frame = feeding.next();
                ASSERT_TRUE(frame);
                ASSERT_EQ(feeding.numberOf(*frame), number) << "run " << run << ", budget " << budget;
                const double offset = std::max(clip.startOf(number) - start, 0.0);
                EXPECT_NEAR(toSeconds(frame->due), begins + offset, 2e-4) << "run " << run;
                EXPECT_NEAR(toSeconds(frame->position), start + offset, 2e-4);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LoopFeeder, EveryLoop,
                         testing::Values(Row{shortInterval, 0, 10}, Row{shortInterval, 1.25, 2.75},
                                         Row{longInterval, 8.2, 8.45}, Row{longInterval, 7, 7.1},
                                         Row{longInterval, 3, 3.05}, Row{longInterval, 4.01, 5.51},
                                         Row{fast, 2, 2.1}, Row{fast, 1, 3.5}, Row{fast, 4.5, 7},
                                         Row{variableRate, 0.5, 0.75}, Row{variableRate, 1, 3.9},
                                         Row{clipWithSound, 1, 2.5}, Row{clipWithSound, 2, 4}));

TEST(LoopFeeder, StopsDecodingOnceTheRangeIsKept)
{
    Feeding feeding(longInterval.file(), rangeOf(7, 7.5), largeBudget);
    feeding.feeder.beginAt(fromSeconds(7));
    for (int i = 0; i < 16; ++i)
        feeding.next();
    EXPECT_TRUE(feeding.feeder.replaysAll());
    const auto first = feeding.feeder.kept()->frames.front();
    while (feeding.next()->frame != first) {
    }
    EXPECT_TRUE(feeding.feeder.replaysAll());
}

TEST(LoopFeeder, BeginsInTheMiddleAndWrapsToTheStart)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 3), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2.9) + 5 * millisecond);
    EXPECT_TRUE(feeding.feeder.needsHead());
    for (int number : {87, 88, 89, 60, 61}) {
        const auto frame = feeding.next();
        EXPECT_EQ(feeding.numberOf(*frame), number);
    }
    EXPECT_FALSE(feeding.feeder.needsHead());
}

TEST(LoopFeeder, ShowsOneFrameOutsideTheRange)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 3), largeBudget);
    for (double outside : {1.0, 3.0, 5.5}) {
        feeding.feeder.beginAt(fromSeconds(outside));
        const auto frame = feeding.next();
        ASSERT_TRUE(frame);
        EXPECT_EQ(feeding.numberOf(*frame), std::lround(outside * 30));
        EXPECT_TRUE(feeding.feeder.parked());
    }
    feeding.feeder.beginAt(fromSeconds(2));
    EXPECT_EQ(feeding.numberOf(*feeding.next()), 60);
    EXPECT_EQ(feeding.numberOf(*feeding.next()), 61);
}

TEST(LoopFeeder, BeginsFromKeptFramesWhenTheyCoverTheTime)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 3), smallBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    for (int i = 0; i < 40; ++i)
        feeding.next();
    for (double time : {2.0, 2.2, 2.5}) {
        feeding.feeder.beginAt(fromSeconds(time));
        const int first = static_cast<int>(std::lround(time * 30));
        for (int number = first; number < 90; ++number)
            EXPECT_EQ(feeding.numberOf(*feeding.next()), number);
        EXPECT_EQ(feeding.numberOf(*feeding.next()), 60);
    }
}

TEST(LoopFeeder, BeginsAtAFrameThatIsDecodedAlready)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 9), largeBudget);
    feeding.feeder.beginAt(fromSeconds(3));
    std::vector<QueuedFrame> decoded;
    for (int number = 90; number < 95; ++number)
        decoded.push_back(*feeding.next());
    feeding.feeder.beginAt(fromSeconds(92.5 / 30), decoded);
    for (std::size_t number = 2; number < 5; ++number)
        EXPECT_EQ(feeding.next()->frame, decoded[number].frame);
    for (int number = 95; number < 100; ++number)
        EXPECT_EQ(feeding.numberOf(*feeding.next()), number);
    feeding.feeder.beginAt(fromSeconds(91 / 30.0), decoded);
    for (int number = 91; number < 100; ++number)
        EXPECT_EQ(feeding.numberOf(*feeding.next()), number) << "the reader was elsewhere";
}

TEST(LoopFeeder, DecodesWhereTheDecodedFramesDoNotCoverTheTime)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 9), largeBudget);
    feeding.feeder.beginAt(fromSeconds(3));
    std::vector<QueuedFrame> decoded;
    for (int number = 90; number < 95; ++number)
        decoded.push_back(*feeding.next());
    for (double time : {2.5, 94.5 / 30, 5.0, 89.9 / 30}) {
        feeding.feeder.beginAt(fromSeconds(time), decoded);
        EXPECT_EQ(feeding.numberOf(*feeding.next()), std::floor(time * 30 + 1e-6)) << time;
    }
    feeding.feeder.beginAt(fromSeconds(92 / 30.0), decoded);
    feeding.next();
    feeding.reader.setBox({160, 90});
    const auto resized = feeding.next();
    EXPECT_EQ(feeding.numberOf(*resized), 93);
    EXPECT_EQ(GST_VIDEO_INFO_WIDTH(&resized->frame->info), 160);
}

TEST(LoopFeeder, RepeatsTheExistingPartOfARangePastTheEnd)
{
    Feeding feeding(shortInterval.file(), rangeOf(9.9, 12), largeBudget);
    feeding.feeder.beginAt(fromSeconds(9.9));
    for (int number : {297, 298, 299, 297, 298, 299, 297}) {
        const auto frame = feeding.next();
        EXPECT_EQ(feeding.numberOf(*frame), number);
    }
}

TEST(LoopFeeder, ShowsTheLastFrameForARangeAfterTheEnd)
{
    Feeding feeding(shortInterval.file(), rangeOf(11, 12), largeBudget);
    feeding.feeder.beginAt(fromSeconds(11));
    for (int run = 0; run < 3; ++run) {
        const auto frame = feeding.next();
        EXPECT_EQ(feeding.numberOf(*frame), 299);
        EXPECT_EQ(frame->due, run * second);
    }
}

TEST(LoopFeeder, RepeatsUpToTheEndOfATruncatedFile)
{
    const MarkedClip clip{
        .name = "front.mp4", .frames = 120, .keyInterval = 30, .output = "-movflags +faststart"};
    const auto size = std::filesystem::file_size(clip.file());
    Feeding feeding(truncatedCopy(clip.file(), "front-loop.mp4", size / 2), rangeOf(0, 4), smallBudget);
    feeding.feeder.beginAt(0);
    int last = -1;
    int runs = 0;
    while (runs < 3) {
        const auto frame = feeding.next();
        ASSERT_TRUE(frame);
        const int number = feeding.numberOf(*frame);
        if (number == 0)
            ++runs;
        else
            ASSERT_EQ(number, last + 1);
        last = number;
    }
}

TEST(LoopFeeder, FailsWhenNoFrameCanBeConverted)
{
    // These pixels are so wide that a frame without a size limit does not fit into memory.
    const std::string square("pasp\0\0\0\1", 8);
    const std::string widest("pasp\0\0\xc2\x2f", 8);
    Feeding feeding(renamedCodec(shortInterval.file(), "widest-pixels.mp4", square, widest), rangeOf(0, 1),
                    largeBudget);
    feeding.reader.setBox({0, 0});
    feeding.feeder.beginAt(0);
    EXPECT_FALSE(feeding.next());
    feeding.reader.setBox({320, 180});
    feeding.feeder.beginAt(0);
    EXPECT_TRUE(feeding.next()) << "a smaller size can be converted";
}

} // namespace stackreel
