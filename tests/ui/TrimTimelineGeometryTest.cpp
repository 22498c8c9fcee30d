#include "ui/geometry/TrimTimelineGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace stackreel
{

namespace
{

using Geometry = TrimTimelineGeometry;
using enum TimelineInteraction;

TEST(TrimTimelineGeometryTest, TheTrackLeavesAnInsetOnBothSidesAndIsNeverEmpty)
{
    EXPECT_EQ(Geometry::trackWidth(836), 800);
    EXPECT_EQ(Geometry::trackWidth(36), 1);
    EXPECT_EQ(Geometry::trackWidth(-5), 1);
}

TEST(TrimTimelineGeometryTest, WithoutASourceEverythingIsAtZero)
{
    for (const double duration : {0.0, -1.0, std::nan("")}) {
        EXPECT_EQ(Geometry::position(3, duration, 800), 0);
        EXPECT_EQ(Geometry::seconds(300, duration, 800), 0);
    }
}

TEST(TrimTimelineGeometryTest, TimesAndPlacesMapOntoEachOtherWithinTheClip)
{
    EXPECT_EQ(Geometry::position(5, 20, 800), 200);
    EXPECT_EQ(Geometry::seconds(200, 20, 800), 5);
    EXPECT_EQ(Geometry::position(-1, 20, 800), 0);
    EXPECT_EQ(Geometry::position(21, 20, 800), 800);
    EXPECT_EQ(Geometry::seconds(-1, 20, 800), 0);
    EXPECT_EQ(Geometry::seconds(900, 20, 800), 20);
}

TEST(TrimTimelineGeometryTest, AHandleIsGrabbedWithin18PointsOfItsCentre)
{
    struct Row {
        double pointer, start, end;
        std::optional<TimelineInteraction> grabbed;
    };
    for (const Row& row :
         {Row{100, 100, 500, trimStart}, Row{118, 100, 500, trimStart}, Row{82, 100, 500, trimStart},
          Row{119, 100, 500, std::nullopt}, Row{81, 100, 500, std::nullopt}, Row{517, 100, 500, trimEnd},
          Row{482, 100, 500, trimEnd}, Row{481, 100, 500, std::nullopt}, Row{519, 100, 500, std::nullopt},
          // Both within reach: the nearer one, the start on a tie.
          Row{108, 100, 120, trimStart}, Row{112, 100, 120, trimEnd}, Row{110, 100, 120, trimStart},
          Row{90, 100, 100, trimStart}, Row{118, 100, 100, trimStart}})
        EXPECT_EQ(Geometry::hitTest(row.pointer, row.start, row.end), row.grabbed)
            << row.pointer << " at " << row.start << " and " << row.end;
}

TEST(TrimTimelineGeometryTest, AStepIsAHundredthOfTheClipButNotBelowAQuarterSecond)
{
    EXPECT_EQ(Geometry::step(10), 0.25);
    EXPECT_EQ(Geometry::step(60), 0.6);
    EXPECT_EQ(Geometry::step(7200), 72);
    EXPECT_EQ(Geometry::step(0), 0.25);
}

TEST(TrimTimelineGeometryTest, TimesAreWrittenInWholeSeconds)
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

} // namespace

} // namespace stackreel
