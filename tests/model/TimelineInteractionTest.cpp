#include "tests/model/PreviewPlaybackTest.h"

namespace stackreel
{

namespace
{

using ATimelineInteraction = PreviewPlaybackTest;
using RebuildingTheLoop = PreviewPlaybackTest;

} // namespace

TEST_F(ATimelineInteraction, InterruptsPlaybackAndResumesIt)
{
    load(20);
    model().beginTimelineInteraction();
    EXPECT_EQ(takeJournal(), (Lines{"player 1: pause", "previewPlaying false"}));
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), (Lines{"player 1: play", "previewPlaying true"}));
}

TEST_F(ATimelineInteraction, LeavesAPausedPreviewPaused)
{
    load(20);
    pause();
    model().beginTimelineInteraction();
    EXPECT_EQ(takeJournal(), (Lines{"player 1: pause", "previewPlaying false"}));
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(ATimelineInteraction, DoesNotResumeWhenBegunTwice)
{
    load(20);
    model().beginTimelineInteraction();
    model().beginTimelineInteraction();
    takeJournal();
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_FALSE(model().previewPlaying());
}

TEST_F(ATimelineInteraction, ResumesOnceWhenEndedTwice)
{
    load(20);
    model().beginTimelineInteraction();
    model().endTimelineInteraction(false);
    pause();
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), Lines());
}

TEST_F(ATimelineInteraction, ChangesNothingWhenItEndsInAnotherSource)
{
    for (const bool rebuildLoop : {false, true}) {
        load(20);
        model().beginTimelineInteraction();
        choose("/clips/b.mov");
        takeJournal();
        model().endTimelineInteraction(rebuildLoop);
        EXPECT_EQ(takeJournal(), Lines()) << "while it loads";

        load(20);
        model().beginTimelineInteraction();
        load(30, "/clips/b.mov");
        model().endTimelineInteraction(rebuildLoop);
        EXPECT_EQ(takeJournal(), Lines());
        EXPECT_TRUE(model().previewPlaying());
        model().beginTimelineInteraction();
        takeJournal();
        model().endTimelineInteraction(false);
        EXPECT_EQ(takeJournal().size(), 2U) << "the next interaction resumes playback";
    }
}

TEST_F(ATimelineInteraction, WorksWithoutAPlayer)
{
    model().togglePreviewPlayback();
    takeJournal();
    model().beginTimelineInteraction();
    EXPECT_EQ(takeJournal(), Lines{"previewPlaying false"});
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), Lines{"previewPlaying true"});
    model().beginTimelineInteraction();
    takeJournal();
    model().endTimelineInteraction(true);
    EXPECT_EQ(takeJournal(), Lines()) << "there is no loop to rebuild";
    EXPECT_FALSE(model().previewPlaying());
}

TEST_F(ATimelineInteraction, LoopsTheNewRangeFromThePlayheadAfterAHandleMoved)
{
    load(20);
    model().beginTimelineInteraction();
    model().updateTrimStart(6);
    model().updateTrimEnd(8);
    takeJournal();
    model().endTimelineInteraction(true);
    Lines expected = rebuilt("from 3600/600 for 1200/600", described(8 - 1.0 / 30), "4780/600");
    expected.back() = "player 1: play";
    expected.push_back("previewPlaying true");
    EXPECT_EQ(takeJournal(), expected);
}

TEST_F(ATimelineInteraction, LoopsFromTheTrimStartAfterAStep)
{
    load(20);
    pause();
    model().beginTimelineInteraction();
    model().updateTrimEnd(8);
    takeJournal();
    model().endTimelineStep();
    EXPECT_EQ(takeJournal(), rebuilt("from 0/600 for 4800/600", "0", "0/600"));

    model().togglePreviewPlayback();
    model().beginTimelineInteraction();
    model().updateTrimStart(6);
    takeJournal();
    model().endTimelineStep();
    EXPECT_TRUE(model().previewPlaying());
    EXPECT_EQ(model().currentTime(), 6);
    takeJournal();
    model().endTimelineInteraction(false);
    EXPECT_EQ(takeJournal(), Lines()) << "playback has been resumed already";
}

TEST_F(RebuildingTheLoop, PlacesThePlayheadInsideTheRange)
{
    load(20);
    pause();
    struct Row {
        double trimStart;
        double trimEnd;
        double currentTime;
        const char* range;
        double playhead;
        const char* seek;
    };
    const Row rows[] = {
        {6, 8, 7, "from 3600/600 for 1200/600", 7, "4200/600"},
        {6, 8, 5, "from 3600/600 for 1200/600", 6, "3600/600"},
        // The playhead is one unit before the end, so that the loop does not wrap at once.
        {6, 8, 8, "from 3600/600 for 1200/600", 8 - 1.0 / 600, "4799/600"},
        {6, 8, 9, "from 3600/600 for 1200/600", 8 - 1.0 / 600, "4799/600"},
        {6, 6, 6, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6, 9, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6.001, 6.001, "from 3600/600 for 150/600", 6, "3600/600"},
        {6, 6.1, 6.05, "from 3600/600 for 150/600", 6.05, "3630/600"},
        {6, 5, 9, "from 3600/600 for 150/600", 6, "3600/600"},
        {-1, 2, -0.5, "from -600/600 for 1800/600", -0.5, "0/600"},
    };
    for (const Row& row : rows) {
        setTimes(row.trimStart, row.trimEnd, row.currentTime);
        model().endTimelineInteraction(true);
        EXPECT_NEAR(model().currentTime(), row.playhead, 1e-12);
        EXPECT_EQ(takeJournal(), rebuilt(row.range, described(model().currentTime()), row.seek));
    }
}

TEST_F(RebuildingTheLoop, KeepsTheMinimumLengthOfAShortClip)
{
    load(0.2);
    pause();
    setTimes(0.1, 0.1, 0.1);
    model().endTimelineInteraction(true);
    EXPECT_EQ(takeJournal(), rebuilt("from 60/600 for 60/600", "0.1", "60/600"));
}

TEST_F(RebuildingTheLoop, DoesNothingWithoutAFileToPlay)
{
    model().setPlayer(m_services.players->make());
    model().setPreviewPlaying(true);
    takeJournal();
    model().endTimelineInteraction(true);
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_TRUE(model().previewPlaying());
}

} // namespace stackreel
