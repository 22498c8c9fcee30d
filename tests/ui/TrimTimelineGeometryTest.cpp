#include "ui/geometry/TrimTimelineGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace stackreel
{

namespace
{

using Geometry = TrimTimelineGeometry;
using enum TimelineInteraction;

TEST(TrimTimelineGeometryTest, TheTrackHasAnInsetOnBothSidesAndIsNeverEmpty)
{
    EXPECT_EQ(Geometry::trackWidth(836), 800);
    EXPECT_EQ(Geometry::trackWidth(36), 1);
    EXPECT_EQ(Geometry::trackWidth(-5), 1);
}

TEST(TrimTimelineGeometryTest, PositionsAndTimesAreZeroWithoutASource)
{
    for (const double duration : {0.0, -1.0, std::nan("")}) {
        EXPECT_EQ(Geometry::position(3, duration, 800), 0);
        EXPECT_EQ(Geometry::seconds(300, duration, 800), 0);
    }
}

TEST(TrimTimelineGeometryTest, MapsTimesToPositionsAndBackWithinTheClip)
{
    EXPECT_EQ(Geometry::position(5, 20, 800), 200);
    EXPECT_EQ(Geometry::seconds(200, 20, 800), 5);
    EXPECT_EQ(Geometry::position(-1, 20, 800), 0);
    EXPECT_EQ(Geometry::position(21, 20, 800), 800);
    EXPECT_EQ(Geometry::seconds(-1, 20, 800), 0);
    EXPECT_EQ(Geometry::seconds(900, 20, 800), 20);
}

TEST(TrimTimelineGeometryTest, GrabsAHandleWithin18PointsOfItsCentre)
{
    struct Row {
        double pointer, start, end;
        std::optional<TimelineInteraction> grabbed;
    };
    for (const Row& row :
         {Row{100, 100, 500, trimStart}, Row{118, 100, 500, trimStart}, Row{82, 100, 500, trimStart},
          Row{119, 100, 500, std::nullopt}, Row{81, 100, 500, std::nullopt}, Row{517, 100, 500, trimEnd},
          Row{482, 100, 500, trimEnd}, Row{481, 100, 500, std::nullopt}, Row{519, 100, 500, std::nullopt},
          // If the pointer is in both hit areas, the nearer handle is hit, or the start handle if both are
          // equally near.
          Row{108, 100, 120, trimStart}, Row{112, 100, 120, trimEnd}, Row{110, 100, 120, trimStart},
          Row{90, 100, 100, trimStart}, Row{118, 100, 100, trimStart}})
        EXPECT_EQ(Geometry::hitTest(row.pointer, row.start, row.end), row.grabbed)
            << row.pointer << " at " << row.start << " and " << row.end;
}

TEST(TrimTimelineGeometryTest, StepsByAHundredthOfTheClipButAtLeastAQuarterSecond)
{
    EXPECT_EQ(Geometry::step(10), 0.25);
    EXPECT_EQ(Geometry::step(60), 0.6);
    EXPECT_EQ(Geometry::step(7200), 72);
    EXPECT_EQ(Geometry::step(0), 0.25);
}

TEST(TrimTimelineGeometryTest, FormatsTimesInWholeSeconds)
{
    struct Row {
        double seconds;
        const char* text;
    };
    for (const Row& row :
         {Row{0, "0:00"}, Row{65, "1:05"}, Row{59.4, "0:59"}, Row{59.5, "1:00"}, Row{3599.4, "59:59"},
          Row{3599.5, "1:00:00"}, Row{3725, "1:02:05"}, Row{360000, "100:00:00"}, Row{-1, "0:00"},
          Row{-0.1, "0:00"}, Row{std::nan(""), "0:00"}, Row{std::numeric_limits<double>::infinity(), "0:00"}})
        EXPECT_EQ(Geometry::timeText(row.seconds), row.text);
}

/// A random number from `low` to `high`, in steps of a thousandth of the range.
double anyBetween(double low, double high)
{
    return low + (high - low) * *rc::gen::inRange(0, 1001) / 1e3;
}

RC_GTEST_PROP(TrimTimelineGeometryProperty, MappingATimeToAPositionAndBackReturnsTheTime, ())
{
    const double duration = anyBetween(0.1, 20000);
    const double width = anyBetween(1, 4000);
    const double seconds = anyBetween(0, duration);
    const double x = Geometry::position(seconds, duration, width);
    RC_ASSERT(x >= 0 && x <= width);
    RC_ASSERT(std::abs(Geometry::seconds(x, duration, width) - seconds) < 1e-9 * duration);
}

RC_GTEST_PROP(TrimTimelineGeometryProperty, MappingIsMonotonicInBothDirections, ())
{
    const double duration = anyBetween(0.1, 20000);
    const double width = anyBetween(1, 4000);
    const double earlier = anyBetween(-duration, 2 * duration);
    const double later = earlier + anyBetween(0, duration);
    RC_ASSERT(Geometry::position(earlier, duration, width) <= Geometry::position(later, duration, width));
    const double left = anyBetween(-width, 2 * width);
    const double right = left + anyBetween(0, width);
    RC_ASSERT(Geometry::seconds(left, duration, width) <= Geometry::seconds(right, duration, width));
}

RC_GTEST_PROP(TrimTimelineGeometryProperty, GrabsTheNearestHandleWithin18Points, ())
{
    const double start = *rc::gen::inRange(0, 60);
    const double end = start + *rc::gen::inRange(0, 60);
    const double pointer = *rc::gen::inRange(-30, 150);
    const double toStart = std::abs(pointer - start);
    const double toEnd = std::abs(pointer - end);
    const auto grabbed = Geometry::hitTest(pointer, start, end);
    RC_ASSERT(grabbed.has_value() == (std::min(toStart, toEnd) <= 18));
    RC_ASSERT(grabbed != playhead);
    RC_ASSERT(grabbed != trimStart || toStart <= toEnd);
    RC_ASSERT(grabbed != trimEnd || toEnd < toStart);
}

RC_GTEST_PROP(TrimTimelineGeometryProperty, TheFormattedTimeParsesToTheNearestWholeSecond, ())
{
    const int seconds = *rc::gen::inRange(0, 400000);
    std::istringstream text(Geometry::timeText(seconds + anyBetween(-0.499, 0.499)));
    int read = 0;
    for (std::string part; std::getline(text, part, ':');)
        read = 60 * read + std::stoi(part);
    RC_ASSERT(read == seconds);
}

} // namespace

} // namespace stackreel
