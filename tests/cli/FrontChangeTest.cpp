#include "cli/EncoderStatus.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(FrontChange, IsReadFromItsLine)
{
    EXPECT_EQ(FrontChange::parse("[stackreel] encoder=libx264: this FFmpeg has no h264_videotoolbox"),
              (FrontChange{
                  .name = "encoder", .value = "libx264", .reason = "this FFmpeg has no h264_videotoolbox"}));
    EXPECT_EQ(FrontChange::parse("[stackreel] a=: b: c=d"),
              (FrontChange{.name = "a", .value = "", .reason = "b: c=d"}));
    for (const char* line : {"", "[stackreel]", "[stackreel] ", "[stackreel] a=b", "[stackreel] =b: c",
                             "[stackreel] a: b=c", " [stackreel] a=b: c", "[libx264 @ 0x5] a=b: c"})
        EXPECT_EQ(FrontChange::parse(line), std::nullopt) << line;
}

TEST(FrontChange, WarnsOnlyOfWhatWasNotConverted)
{
    const FrontChange kept{.name = "dynamic-range", .value = "unconverted", .reason = "why"};
    EXPECT_EQ(kept.warning("a b.mp4"), "Warning: a b.mp4 keeps the dynamic range of its source: why.");
    EXPECT_EQ((FrontChange{.name = "matrix", .value = "bt709", .reason = "why"}).warning("a.mp4"), "");
}

TEST(EncoderStatusReader, CollectsALimitedNumberOfChanges)
{
    EncoderStatusReader reader;
    reader.feed("[stackreel] a=1: one\n[stack");
    reader.feed("reel] b=2: two\nInput #0\n");
    ASSERT_EQ(reader.changes().size(), 2U);
    EXPECT_EQ(reader.changes()[1], (FrontChange{.name = "b", .value = "2", .reason = "two"}));
    for (int i = 0; i < 1000; ++i)
        reader.feed("[stackreel] a=1: one\n");
    EXPECT_EQ(reader.changes().size(), 64U);
}

} // namespace

} // namespace stackreel
