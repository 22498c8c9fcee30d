#include "tests/model/PreviewPlaybackTest.h"

namespace stackreel
{

namespace
{

using MovingTheTrimStart = PreviewPlaybackTest;
using MovingTheTrimEnd = PreviewPlaybackTest;

} // namespace

TEST_F(MovingTheTrimStart, KeepsTheMinimumLengthBeforeTheEnd)
{
    struct Row {
        double duration;
        double trimEnd;
        double requested;
        double trimStart;
        const char* seek;
    };
    const Row rows[] = {
        {20, 10, -3, 0, "0/600"},        {20, 10, 9, 9, "5400/600"},       {20, 10, 9.75, 9.75, "5850/600"},
        {20, 10, 9.8, 9.75, "5850/600"}, {20, 10, 100, 9.75, "5850/600"},  {20, 0.1, 5, 0, "0/600"},
        {0.2, 0.2, 0.15, 0.1, "60/600"}, {0.2, 0.2, 0.05, 0.05, "30/600"}, {0.06, 0.06, 1, 0.01, "6/600"},
        {0.5, 0.5, 1, 0.25, "150/600"},  {0, 20, 30, 19.95, "11970/600"},
    };
    for (const Row& row : rows) {
        load(row.duration);
        setTimes(0, row.trimEnd, 0);
        model().updateTrimStart(row.requested);
        EXPECT_NEAR(model().trimStart(), row.trimStart, 1e-12) << row.requested;
        EXPECT_EQ(model().currentTime(), model().trimStart());
        EXPECT_EQ(model().trimEnd(), row.trimEnd);
        const std::string start = described(model().trimStart());
        EXPECT_EQ(takeJournal(), (Lines{"trimStart " + start, "currentTime " + start,
                                        player().name() + ": seek to " + row.seek}));
    }
}

TEST_F(MovingTheTrimStart, WorksWithoutASource)
{
    setTimes(0, 10, 0);
    model().updateTrimStart(9.99);
    EXPECT_EQ(takeJournal(), (Lines{"trimStart 9.95", "currentTime 9.95"}));
}

TEST_F(MovingTheTrimEnd, KeepsTheMinimumLengthAfterTheStartAndStaysInTheClip)
{
    struct Row {
        double duration;
        double trimStart;
        double requested;
        double trimEnd;
        double currentTime;
        const char* seek;
    };
    const Row rows[] = {
        {20, 0, 100, 20, 20 - 1.0 / 30, "11980/600"},
        {20, 0, 10, 10, 10 - 1.0 / 30, "5980/600"},
        {20, 9, 9.1, 9.25, 9.25 - 1.0 / 30, "5530/600"},
        {20, 9, -5, 9.25, 9.25 - 1.0 / 30, "5530/600"},
        // With the minimum duration, the range may end after the clip.
        {20, 19.9, 20, 20.15, 20.15 - 1.0 / 30, "12070/600"},
        {0.2, 0, 0.01, 0.1, 0.1 - 1.0 / 30, "40/600"},
        {0.05, 0, 0.01, 0.05, 0.05 - 1.0 / 30, "10/600"},
        {20, -1, -2, -0.75, -0.75 - 1.0 / 30, "0/600"},
    };
    for (const Row& row : rows) {
        load(row.duration);
        setTimes(row.trimStart, row.duration, row.trimStart);
        model().updateTrimEnd(row.requested);
        EXPECT_NEAR(model().trimEnd(), row.trimEnd, 1e-12) << row.requested;
        EXPECT_NEAR(model().currentTime(), row.currentTime, 1e-12) << row.requested;
        EXPECT_EQ(model().trimStart(), row.trimStart);
        EXPECT_EQ(takeJournal(), (Lines{"trimEnd " + described(model().trimEnd()),
                                        "currentTime " + described(model().currentTime()),
                                        player().name() + ": seek to " + row.seek}));
    }
}

TEST_F(MovingTheTrimEnd, PutsThePlayheadAFrameBeforeTheEndOfTheShortestRange)
{
    load(20);
    model().setMediaInfo(clip(0.05));
    setTimes(0, 20, 0);
    model().setTrimStart(3);
    takeJournal();
    model().updateTrimEnd(2);
    EXPECT_NEAR(model().trimEnd(), 3.05, 1e-12);
    EXPECT_NEAR(model().currentTime(), 3.05 - 1.0 / 30, 1e-12);
}

TEST_F(MovingTheTrimEnd, DoesNothingWithoutASource)
{
    setTimes(0, 10, 4);
    model().updateTrimEnd(5);
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(model().trimEnd(), 10);
}

} // namespace stackreel
