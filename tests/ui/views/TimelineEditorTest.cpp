#include "ui/TimelineEditor.h"

#include "model/AppModel.h"
#include "tests/support/fakes/FakeServices.h"
#include "ui/WindowModel.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace stackreel
{

namespace
{

using enum TimelineInteraction;

/// A strip of 836 points, whose track is 800 points long, over a playing clip of 20 seconds: 40 points a
/// second, beginning at 18.
struct LoadedTimeline {
    LoadedTimeline() : model(world.services()), windowModel(model)
    {
        timeline.setModel(&windowModel);
        timeline.setWidth(836);
        model.chooseSource();
        world.openPanel->choose("/clips/beach.mov");
        settle();
        world.inspections.back().task().complete({.width = 1920,
                                                  .height = 1080,
                                                  .rotation = 0,
                                                  .duration = 20,
                                                  .videoCodec = "h264",
                                                  .audioCodec = {}});
        world.previews.back().task().complete("/clips/beach.mov");
        settle();
        world.journal->take();
    }

    static void settle()
    {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::sendPostedEvents();
    }

    void trim(double start, double end)
    {
        model.updateTrimStart(start);
        model.updateTrimEnd(end);
        model.seekPreview(start);
        world.journal->take();
    }

    /// How often this line was written since the last call of the journal.
    static std::ptrdiff_t count(const Journal::Lines& lines, const std::string& word)
    {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const auto& line) { return line.find(word) != std::string::npos; });
    }

    FakeServices world;
    AppModel model;
    WindowModel windowModel;
    TimelineEditor timeline;
};

double xOf(double seconds)
{
    return 18 + 40 * seconds;
}

TEST(TimelineEditorTest, TimesLieOnTheTrack)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    EXPECT_EQ(loaded.timeline.trackWidth(), 800);
    EXPECT_EQ(loaded.timeline.startX(), xOf(5));
    EXPECT_EQ(loaded.timeline.endX(), xOf(15));
    EXPECT_EQ(loaded.timeline.playheadX(), xOf(5));
}

TEST(TimelineEditorTest, WithoutAModelNothingHappens)
{
    TimelineEditor timeline;
    timeline.setWidth(400);
    timeline.press(100);
    timeline.drag(120);
    timeline.release();
    timeline.adjustPlayhead(1);
    timeline.adjustTrimStart(1);
    timeline.adjustTrimEnd(1);
    EXPECT_EQ(timeline.startX(), 18);
    EXPECT_FALSE(timeline.interaction());
}

TEST(TimelineEditorTest, APressAloneSeeks)
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

TEST(TimelineEditorTest, NineteenPointsFromBothHandlesThePlayheadIsGrabbed)
{
    LoadedTimeline loaded;
    loaded.trim(5, 15);
    loaded.timeline.press(xOf(5) + 19);
    EXPECT_EQ(loaded.timeline.interaction(), playhead);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 5 + 19.0 / 40);
}

TEST(TimelineEditorTest, AHandleGrabbedBesideItsCentreDoesNotJump)
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

TEST(TimelineEditorTest, OfHandlesAtOnePlaceTheStartIsGrabbed)
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

TEST(TimelineEditorTest, ThePreviewPausesDuringADragAndGoesOnAfterIt)
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

TEST(TimelineEditorTest, OnlyTheDragOfAHandleRebuildsTheLoop)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(8));
    loaded.timeline.release();
    EXPECT_EQ(LoadedTimeline::count(loaded.world.journal->take(), "looper"), 0);
    loaded.timeline.press(xOf(0));
    loaded.timeline.drag(xOf(3));
    loaded.timeline.release();
    EXPECT_GT(LoadedTimeline::count(loaded.world.journal->take(), "looper"), 0);
    EXPECT_EQ(loaded.model.trimStart(), 3);
}

TEST(TimelineEditorTest, AReleaseWithoutAPressIsNone)
{
    LoadedTimeline loaded;
    loaded.timeline.release();
    loaded.timeline.drag(xOf(4));
    EXPECT_TRUE(loaded.world.journal->take().empty());
    EXPECT_TRUE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, AHoveredHandleShowsTheOpenHand)
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
    EXPECT_EQ(loaded.timeline.cursors().pushed(), 1U);
    loaded.timeline.leave();
    EXPECT_EQ(loaded.timeline.cursors().pushed(), 0U);
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, GoingFromOneHandleToTheOtherPopsOnce)
{
    LoadedTimeline loaded;
    loaded.trim(5, 5.5);
    loaded.timeline.hover(xOf(5));
    loaded.timeline.hover(xOf(5.5));
    EXPECT_EQ(loaded.timeline.hoveredHandle(), trimEnd);
    EXPECT_EQ(loaded.timeline.cursors().pushed(), 1U);
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::OpenHandCursor);
}

TEST(TimelineEditorTest, DuringADragHoveringDoesNothing)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(10));
    loaded.timeline.hover(xOf(0));
    EXPECT_FALSE(loaded.timeline.hoveredHandle());
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, ADraggedHandleIsHeldByAClosedHand)
{
    LoadedTimeline loaded;
    loaded.timeline.hover(xOf(0));
    loaded.timeline.press(xOf(0));
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(loaded.timeline.startActive());
    EXPECT_TRUE(loaded.timeline.grabsStart());
    loaded.timeline.release();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::OpenHandCursor);
    loaded.timeline.leave();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
}

TEST(TimelineEditorTest, AHandleDraggedWithoutHoveringLeavesTheArrow)
{
    LoadedTimeline loaded;
    loaded.timeline.press(xOf(20));
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(loaded.timeline.endActive());
    loaded.timeline.release();
    EXPECT_EQ(loaded.timeline.cursorShape(), Qt::ArrowCursor);
    EXPECT_FALSE(loaded.timeline.endActive());
}

TEST(TimelineEditorTest, ThePlayheadStepsByAHundredthOfTheClip)
{
    LoadedTimeline loaded;
    loaded.model.seekPreview(10);
    loaded.timeline.adjustPlayhead(1);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 10.25) << "not less than a quarter of a second";
    loaded.timeline.adjustPlayhead(-1);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 10);
    EXPECT_TRUE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, AStepOfAHandleRebuildsTheLoopAndPlaysOnIfItPlayed)
{
    LoadedTimeline loaded;
    loaded.timeline.adjustTrimStart(1);
    EXPECT_DOUBLE_EQ(loaded.model.trimStart(), 0.25);
    EXPECT_TRUE(loaded.model.previewPlaying());
    EXPECT_GT(LoadedTimeline::count(loaded.world.journal->take(), "looper"), 0);
    loaded.model.togglePreviewPlayback();
    loaded.timeline.adjustTrimEnd(-1);
    EXPECT_DOUBLE_EQ(loaded.model.trimEnd(), 19.75);
    EXPECT_DOUBLE_EQ(loaded.model.currentTime(), 0.25) << "from the start of the range";
    EXPECT_FALSE(loaded.model.previewPlaying());
}

TEST(TimelineEditorTest, WithoutMediaNothingSteps)
{
    LoadedTimeline loaded;
    loaded.model.setMediaInfo({});
    loaded.timeline.adjustPlayhead(1);
    loaded.timeline.adjustTrimStart(1);
    loaded.timeline.adjustTrimEnd(-1);
    EXPECT_TRUE(loaded.world.journal->take().empty());
    EXPECT_EQ(loaded.timeline.endX(), 18);
}

double anyX()
{
    return *rc::gen::inRange(-1000, 20000) / 10.0;
}

RC_GTEST_PROP(TimelineEditorProperty, EveryPushHasItsPopAndEveryDragItsEnd, ())
{
    LoadedTimeline loaded;
    loaded.trim(*rc::gen::inRange(0, 10), *rc::gen::inRange(10, 20));
    TimelineEditor& timeline = loaded.timeline;
    for (int count = *rc::gen::inRange(0, 30); count > 0; --count) {
        switch (*rc::gen::inRange(0, 5)) {
        case 0:
            timeline.press(anyX());
            break;
        case 1:
            timeline.drag(anyX());
            break;
        case 2:
            timeline.release();
            break;
        case 3:
            timeline.hover(anyX());
            break;
        default:
            timeline.leave();
        }
        RC_ASSERT(timeline.cursors().pushed() == (timeline.hoveredHandle() ? 1U : 0U));
        RC_ASSERT(timeline.interaction().has_value() != loaded.model.previewPlaying());
    }
    timeline.release();
    timeline.leave();
    RC_ASSERT(timeline.cursorShape() == Qt::ArrowCursor);
    RC_ASSERT(timeline.cursors().pushed() == 0U);
    RC_ASSERT(loaded.model.previewPlaying());
}

RC_GTEST_PROP(TimelineEditorProperty, GrabbingAHandleMovesNothing, ())
{
    LoadedTimeline loaded;
    const double start = *rc::gen::inRange(0, 1000) / 100.0;
    const double end = *rc::gen::inRange(1100, 2000) / 100.0;
    loaded.trim(start, end);
    const double offset = *rc::gen::inRange(-180, 181) / 10.0;
    const bool atStart = *rc::gen::arbitrary<bool>();
    loaded.timeline.press((atStart ? loaded.timeline.startX() : loaded.timeline.endX()) + offset);
    loaded.timeline.release();
    RC_ASSERT(std::abs(loaded.model.trimStart() - start) < 1e-9);
    RC_ASSERT(std::abs(loaded.model.trimEnd() - end) < 1e-9);
}

RC_GTEST_PROP(TimelineEditorProperty, ADragDependsOnItsLastPlaceAlone, ())
{
    LoadedTimeline direct;
    LoadedTimeline wandering;
    direct.timeline.press(xOf(0));
    wandering.timeline.press(xOf(0));
    for (int count = *rc::gen::inRange(0, 10); count > 0; --count)
        wandering.timeline.drag(anyX());
    const double x = anyX();
    direct.timeline.drag(x);
    wandering.timeline.drag(x);
    RC_ASSERT(direct.model.trimStart() == wandering.model.trimStart());
}

} // namespace

} // namespace stackreel
