#include "tests/ui/views/LoadedTimeline.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

double anyX()
{
    return *rc::gen::inRange(-1000, 20000) / 10.0;
}

RC_GTEST_PROP(TimelineEditorProperty, TheCursorStackIsBalancedAfterAnySequenceOfInput, ())
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
        RC_ASSERT(timeline.cursors().depth() == (timeline.hoveredHandle() ? 1U : 0U));
        RC_ASSERT(timeline.interaction().has_value() != loaded.model.previewPlaying());
    }
    timeline.release();
    timeline.leave();
    RC_ASSERT(timeline.cursorShape() == Qt::ArrowCursor);
    RC_ASSERT(timeline.cursors().depth() == 0U);
    RC_ASSERT(loaded.model.previewPlaying());
}

RC_GTEST_PROP(TimelineEditorProperty, GrabbingAHandleDoesNotMoveIt, ())
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

RC_GTEST_PROP(TimelineEditorProperty, ADragDependsOnlyOnTheLastPosition, ())
{
    LoadedTimeline direct;
    LoadedTimeline indirect;
    direct.timeline.press(xOf(0));
    indirect.timeline.press(xOf(0));
    for (int count = *rc::gen::inRange(0, 10); count > 0; --count)
        indirect.timeline.drag(anyX());
    const double x = anyX();
    direct.timeline.drag(x);
    indirect.timeline.drag(x);
    RC_ASSERT(direct.model.trimStart() == indirect.model.trimStart());
}

} // namespace

} // namespace stackreel
