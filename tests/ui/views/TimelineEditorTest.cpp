#include "tests/ui/views/LoadedTimeline.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using enum TimelineInteraction;

TEST(TimelineEditorTest, MapsTimesToPositionsOnTheTrack)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    EXPECT_EQ(loaded.timeline.trackWidth(), 800);
    EXPECT_EQ(loaded.timeline.startX(), xOf(5));
    EXPECT_EQ(loaded.timeline.endX(), xOf(15));
    EXPECT_EQ(loaded.timeline.playheadX(), xOf(5));
}

TEST(TimelineEditorTest, PositionsFollowTheDurationAndTheWidth)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    QSignalSpy start(&loaded.timeline, &TimelineEditor::startXChanged);
    QSignalSpy end(&loaded.timeline, &TimelineEditor::endXChanged);
    QSignalSpy playhead(&loaded.timeline, &TimelineEditor::playheadXChanged);
    QSignalSpy step(&loaded.timeline, &TimelineEditor::stepChanged);
    MediaInfo longer = *loaded.model.mediaInfo();
    longer.duration = 80;
    loaded.model.setMediaInfo(longer);
    for (const QSignalSpy* changes : {&start, &end, &playhead, &step})
        EXPECT_EQ(changes->count(), 1);
    EXPECT_EQ(loaded.timeline.endX(), 18 + 150);
    EXPECT_EQ(loaded.timeline.step(), 0.8);
    loaded.timeline.setWidth(436);
    for (const QSignalSpy* changes : {&start, &end, &playhead})
        EXPECT_EQ(changes->count(), 2);
    EXPECT_EQ(loaded.timeline.endX(), 18 + 75);
}

TEST(TimelineEditorTest, DoesNothingWithoutAModel)
{
    TimelineEditor timeline;
    timeline.setWidth(400);
    timeline.hover(20);
    EXPECT_FALSE(timeline.hoveredHandle());
    timeline.press(100);
    timeline.drag(120);
    timeline.release();
    timeline.adjustPlayhead(1);
    timeline.adjustTrimStart(1);
    timeline.adjustTrimEnd(1);
    EXPECT_EQ(timeline.startX(), 18);
    EXPECT_FALSE(timeline.interaction());
}

TEST(TimelineEditorTest, APressSeeks)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(8));
    EXPECT_EQ(loaded.timeline.interaction(), playhead);
    EXPECT_EQ(loaded.model.currentTime(), 8);
    EXPECT_EQ(loaded.timeline.dragGrabOffset(), 0);
    loaded.timeline.release();
    EXPECT_FALSE(loaded.timeline.interaction());
    EXPECT_EQ(loaded.model.currentTime(), 8);
}

TEST(TimelineEditorTest, APress19PointsFromBothHandlesGrabsThePlayhead)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    loaded.timeline.press(xOf(5) + 19);
    EXPECT_EQ(loaded.timeline.interaction(), playhead);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 5 + 19.0 / 40);
}

TEST(TimelineEditorTest, AHandleGrabbedOffCentreDoesNotJump)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    loaded.timeline.press(xOf(15) + 17);
    EXPECT_EQ(loaded.timeline.interaction(), trimEnd);
    EXPECT_EQ(loaded.timeline.dragGrabOffset(), 17);
    EXPECT_EQ(loaded.model.trimEnd(), 15);
    loaded.timeline.drag(xOf(12) + 17);
    EXPECT_DOUBLE_EQ(loaded.model.trimEnd(), 12);
    loaded.timeline.release();
    EXPECT_EQ(loaded.timeline.dragGrabOffset(), 0);
}

TEST(TimelineEditorTest, APressOnBothHandlesGrabsTheStart)
{
    for (const double offset : {-18.0, -5.0, 0.0, 5.0, 18.0}) {
        LoadedTimeline loaded;
        loaded.model.setTrimStart(10);
        loaded.model.setTrimEnd(10);
        loaded.timeline.press(xOf(10) + offset);
        EXPECT_EQ(loaded.timeline.interaction(), trimStart) << offset;
        loaded.timeline.release();
    }
}

TEST(TimelineEditorTest, ThePreviewPausesDuringADragAndResumesAfterIt)
{
    LoadedTimeline loaded;
    ASSERT_TRUE(loaded.model.previewPlaying());
    loaded.timeline.press(xOf(8));
    EXPECT_FALSE(loaded.model.previewPlaying());
    loaded.timeline.release();
    EXPECT_TRUE(loaded.model.previewPlaying());
    loaded.model.togglePreviewPlayback();
    loaded.timeline.press(xOf(8));
    loaded.timeline.release();
    EXPECT_FALSE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, DraggingAHandleRebuildsTheLoop)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(8));
    loaded.timeline.release();
    EXPECT_EQ(LoadedTimeline::count(loaded.fakes.journal->take(), ": open "), 0);
    loaded.timeline.press(xOf(0));
    loaded.timeline.drag(xOf(3));
    loaded.timeline.release();
    EXPECT_GT(LoadedTimeline::count(loaded.fakes.journal->take(), ": open "), 0);
    EXPECT_EQ(loaded.model.trimStart(), 3);
}

TEST(TimelineEditorTest, IgnoresAReleaseWithoutAPress)
{
    LoadedTimeline loaded;
    loaded.timeline.release();
    loaded.timeline.drag(xOf(4));
    EXPECT_TRUE(loaded.fakes.journal->take().empty());
    EXPECT_TRUE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, ShowsTheOpenHandCursorOverAHandle)
{
    LoadedTimeline loaded;
    loaded.timeline.hover(xOf(0) + 18);
    EXPECT_EQ(loaded.timeline.hoveredHandle(), trimStart);
    EXPECT_TRUE(loaded.timeline.startActive());
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::OpenHandCursor);
    loaded.timeline.hover(xOf(10));
    EXPECT_FALSE(loaded.timeline.hoveredHandle());
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
    loaded.timeline.hover(xOf(20) - 3);
    EXPECT_EQ(loaded.timeline.hoveredHandle(), trimEnd);
    EXPECT_EQ(loaded.timeline.cursors().depth(), 1U);
    loaded.timeline.leave();
    EXPECT_EQ(loaded.timeline.cursors().depth(), 0U);
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, HoveringFromOneHandleToTheOtherKeepsOneCursor)
{
    LoadedTimeline loaded;
    loaded.trim(5, 5.5);
    loaded.timeline.hover(xOf(5));
    loaded.timeline.hover(xOf(5.5));
    EXPECT_EQ(loaded.timeline.hoveredHandle(), trimEnd);
    EXPECT_EQ(loaded.timeline.cursors().depth(), 1U);
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::OpenHandCursor);
}

TEST(TimelineEditorTest, HoveringHasNoEffectDuringADrag)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(10));
    loaded.timeline.hover(xOf(0));
    EXPECT_FALSE(loaded.timeline.hoveredHandle());
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, ShowsTheClosedHandCursorDuringADrag)
{
    LoadedTimeline loaded;
    loaded.timeline.hover(xOf(0));
    loaded.timeline.press(xOf(0));
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(loaded.timeline.startActive());
    EXPECT_TRUE(loaded.timeline.draggingStart());
    loaded.timeline.release();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::OpenHandCursor);
    loaded.timeline.leave();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, ShowsTheArrowAfterDraggingAHandleThatWasNotHovered)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(20));
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(loaded.timeline.endActive());
    loaded.timeline.release();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
    EXPECT_FALSE(loaded.timeline.endActive());
}

TEST(TimelineEditorTest, ThePlayheadStepsByAHundredthOfTheClipButAtLeastAQuarterSecond)
{
    LoadedTimeline loaded;
    loaded.model.seekPreview(10);
    loaded.timeline.adjustPlayhead(1);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 10.25) << "not less than a quarter of a second";
    loaded.timeline.adjustPlayhead(-1);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 10);
    EXPECT_TRUE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, SteppingAHandleRebuildsTheLoopAndKeepsThePlaybackState)
{
    LoadedTimeline loaded;
    loaded.timeline.adjustTrimStart(1);
    EXPECT_DOUBLE_EQ(loaded.model.trimStart(), 0.25);
    EXPECT_TRUE(loaded.model.previewPlaying());
    EXPECT_GT(LoadedTimeline::count(loaded.fakes.journal->take(), ": open "), 0);
    loaded.model.togglePreviewPlayback();
    loaded.timeline.adjustTrimEnd(-1);
    EXPECT_DOUBLE_EQ(loaded.model.trimEnd(), 19.75);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 0.25) << "from the start of the range";
    EXPECT_FALSE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, DoesNotStepWithoutMedia)
{
    LoadedTimeline loaded;
    loaded.model.setMediaInfo({});
    loaded.timeline.adjustPlayhead(1);
    loaded.timeline.adjustTrimStart(1);
    loaded.timeline.adjustTrimEnd(-1);
    EXPECT_TRUE(loaded.fakes.journal->take().empty());
    EXPECT_EQ(loaded.timeline.endX(), 18);
}

} // namespace

} // namespace stackreel
