#include "tests/player/LoopFeeding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace stackreel
{

namespace
{

const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};

/// Expects these frames next. Returns them.
std::vector<PlanarFramePtr> expectFrames(Feeding& feeding, LoopFeeder& feeder, int first, int last)
{
    std::vector<PlanarFramePtr> frames;
    for (int number = first; number <= last; ++number) {
        const auto frame = feeding.next(feeder);
        if (!frame) {
            ADD_FAILURE() << "no frame instead of " << number;
            break;
        }
        EXPECT_EQ(feeding.numberOf(*frame), number);
        frames.push_back(frame->frame);
    }
    return frames;
}

} // namespace

TEST(HeadOfLoop, ReplaysOutdatedFramesUntilTheyAreDropped)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 2.5), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    const auto widthInNextRun = [&feeding] {
        std::optional<QueuedFrame> frame = feeding.next();
        for (const auto run = frame->iteration; frame->iteration == run;)
            frame = feeding.next();
        return GST_VIDEO_INFO_WIDTH(&frame->frame->info);
    };
    EXPECT_EQ(widthInNextRun(), 320);
    feeding.reader.setBox({160, 90});
    EXPECT_TRUE(feeding.feeder.needsHead());
    EXPECT_EQ(widthInNextRun(), 320) << "without a gap";
    feeding.feeder.dropOutdated();
    EXPECT_EQ(widthInNextRun(), 160);
    EXPECT_FALSE(feeding.feeder.needsHead());
    EXPECT_EQ(widthInNextRun(), 160);
    EXPECT_TRUE(feeding.feeder.replaysAll());
}

TEST(HeadOfLoop, ReplacesOnlyTheFramesFromBeforeASizeChange)
{
    Feeding feeding(shortInterval.file(), rangeOf(2, 3), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    for (int number = 60; number < 65; ++number)
        EXPECT_EQ(feeding.numberOf(*feeding.next()), number);
    feeding.reader.setBox({160, 90});
    for (int number = 65; number < 90; ++number)
        EXPECT_EQ(feeding.numberOf(*feeding.next()), number);
    EXPECT_EQ(feeding.numberOf(*feeding.next()), 60);
    ASSERT_TRUE(feeding.feeder.needsHead());
    const LoopRange head = feeding.feeder.headRange();
    EXPECT_NEAR(toSeconds(head.start), 2, 0.001);
    EXPECT_NEAR(toSeconds(head.end), 65 / 30.0, 0.001);

    Feeding filling(shortInterval.file(), head, largeBudget);
    filling.reader.setBox({160, 90});
    filling.feeder.beginAt(head.start);
    while (!filling.feeder.kept())
        ASSERT_TRUE(filling.next());
    EXPECT_EQ(filling.feeder.kept()->frames.size(), 5U);
    EXPECT_TRUE(feeding.feeder.adopt(filling.feeder.kept()));
    EXPECT_FALSE(feeding.feeder.needsHead());
    for (int number = 61; number < 90; ++number)
        EXPECT_EQ(feeding.numberOf(*feeding.next()), number) << "from the frames kept before";
    for (int number = 60; number < 90; ++number) {
        const auto frame = feeding.next();
        EXPECT_EQ(feeding.numberOf(*frame), number);
        EXPECT_EQ(GST_VIDEO_INFO_WIDTH(&frame->frame->info), 160);
    }
    EXPECT_TRUE(feeding.feeder.replaysAll());
}

TEST(HeadOfLoop, IsTakenOverWhenTheRangeEndsEarlier)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 2.5), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    const auto kept = expectFrames(feeding, feeding.feeder, 60, 74);
    expectFrames(feeding, feeding.feeder, 60, 60);
    LoopFeeder shorter(feeding.reader, rangeOf(2, 2.4), largeBudget);
    shorter.takeOver(feeding.feeder);
    EXPECT_FALSE(shorter.needsHead());
    shorter.beginAt(fromSeconds(71 / 30.0));
    EXPECT_TRUE(shorter.replaysAll());
    EXPECT_EQ(feeding.next(shorter)->frame, kept[11]);
    for (int number = 0; number < 12; ++number)
        EXPECT_EQ(feeding.next(shorter)->frame, kept[static_cast<std::size_t>(number)]);
    const auto begun = feeding.next(shorter);
    EXPECT_EQ(begun->frame, kept[0]);
    EXPECT_NEAR(toSeconds(begun->due), 0.8, 1e-3);
}

TEST(HeadOfLoop, IsTakenOverAndExtendedWhenTheRangeEndsLater)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 2.5), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    const auto kept = expectFrames(feeding, feeding.feeder, 60, 74);
    expectFrames(feeding, feeding.feeder, 60, 60);
    LoopFeeder longer(feeding.reader, rangeOf(2, 2.7), largeBudget);
    longer.takeOver(feeding.feeder);
    EXPECT_FALSE(longer.needsHead());
    longer.beginAt(fromSeconds(80 / 30.0));
    expectFrames(feeding, longer, 80, 80);
    const auto run = expectFrames(feeding, longer, 60, 80);
    ASSERT_EQ(run.size(), 21U);
    EXPECT_TRUE(std::equal(kept.begin(), kept.end(), run.begin())) << "the frames that were kept";
    EXPECT_EQ(expectFrames(feeding, longer, 60, 80), run) << "the rest is kept, too";
    EXPECT_TRUE(longer.replaysAll());
}

TEST(HeadOfLoop, IsNotTakenOverByARangeWithAnotherStartOrSize)
{
    Feeding feeding(longInterval.file(), rangeOf(2, 2.5), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    expectFrames(feeding, feeding.feeder, 60, 74);
    expectFrames(feeding, feeding.feeder, 60, 60);
    LoopFeeder later(feeding.reader, rangeOf(2.1, 2.5), largeBudget);
    later.takeOver(feeding.feeder);
    later.beginAt(fromSeconds(2.2));
    EXPECT_TRUE(later.needsHead());
    feeding.reader.setBox({160, 90});
    LoopFeeder smaller(feeding.reader, rangeOf(2, 2.4), largeBudget);
    smaller.takeOver(feeding.feeder);
    smaller.beginAt(fromSeconds(2.2));
    EXPECT_TRUE(smaller.needsHead());
}

TEST(HeadOfLoop, IsKeptAndExtendedWhenASeekInterruptsItsFirstRun)
{
    Feeding feeding(shortInterval.file(), rangeOf(2, 4), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2));
    expectFrames(feeding, feeding.feeder, 60, 95);
    feeding.feeder.beginAt(fromSeconds(119 / 30.0));
    EXPECT_FALSE(feeding.feeder.needsHead());
    expectFrames(feeding, feeding.feeder, 119, 119);
    const auto run = expectFrames(feeding, feeding.feeder, 60, 119);
    EXPECT_EQ(expectFrames(feeding, feeding.feeder, 60, 119), run);
    EXPECT_TRUE(feeding.feeder.replaysAll());
}

TEST(HeadOfLoop, RejectsFramesThatDoNotJoinItsOwn)
{
    Feeding filling(shortInterval.file(), rangeOf(2, 2.5), largeBudget);
    filling.feeder.beginAt(fromSeconds(2));
    while (!filling.feeder.kept())
        ASSERT_TRUE(filling.next());
    Feeding feeding(shortInterval.file(), rangeOf(2, 3), largeBudget);
    feeding.feeder.beginAt(fromSeconds(2.2));
    EXPECT_EQ(feeding.numberOf(*feeding.next()), 66);
    EXPECT_FALSE(feeding.feeder.adopt(filling.feeder.kept()));
    EXPECT_TRUE(feeding.feeder.needsHead());
}

} // namespace stackreel
