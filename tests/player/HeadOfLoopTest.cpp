#include "tests/player/LoopFeeding.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};

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
