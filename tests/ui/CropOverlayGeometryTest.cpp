#include "ui/geometry/CropOverlayGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

using Geometry = CropOverlayGeometry;

constexpr ViewSize view = {.width = 1000, .height = 500};
constexpr CropRegion start = {.x = 0.1, .y = 0.2, .width = 0.225, .height = 0.4}; // 225 × 200 points

double anyBetween(double low, double high)
{
    return low + (high - low) * *rc::gen::inRange(0, 1000001) / 1e6;
}

ViewSize anyView()
{
    return {.width = anyBetween(200, 4000), .height = anyBetween(200, 4000)};
}

CropRegion anyRegion()
{
    const CropRegion region = {.x = anyBetween(0, 1),
                               .y = anyBetween(0, 1),
                               .width = anyBetween(0.06, 1),
                               .height = anyBetween(0.06, 1)};
    return region.clampedToFrame();
}

ViewTranslation anyTranslation()
{
    return {.x = anyBetween(-5000, 5000), .y = anyBetween(-5000, 5000)};
}

bool isInFrame(const CropRegion& region)
{
    return region == region.clampedToFrame();
}

TEST(CropOverlayGeometryTest, ScalesTheRegionToTheView)
{
    EXPECT_EQ(Geometry::displayRect({.x = 0.5, .y = 0.25, .width = 0.25, .height = 0.5}, view),
              (ViewRect{.x = 500, .y = 125, .width = 250, .height = 250}));
}

TEST(CropOverlayGeometryTest, ClampsAMoveToTheRightEdge)
{
    const CropRegion moved = Geometry::moved(start, view, {.x = 1000, .y = 0});
    EXPECT_EQ(moved.x, 1 - start.width);
    EXPECT_EQ(moved.width, start.width);
    EXPECT_EQ(moved.height, start.height);
    EXPECT_DOUBLE_EQ(moved.y, start.y);
}

TEST(CropOverlayGeometryTest, ResizesByTheHeightInAMostlyVerticalDrag)
{
    const CropRegion resized = Geometry::resized(start, view, {.x = 10, .y = 50}, 1.125);
    EXPECT_DOUBLE_EQ(resized.height * view.height, 250);
    EXPECT_DOUBLE_EQ(resized.width * view.width, 281.25);
}

TEST(CropOverlayGeometryTest, ResizesByTheWidthWhenBothDistancesAreEqual)
{
    const CropRegion resized = Geometry::resized(start, view, {.x = -40, .y = 40}, 1.125);
    EXPECT_DOUBLE_EQ(resized.width * view.width, 185);
}

TEST(CropOverlayGeometryTest, LimitsAResizeToAWidthOf80Points)
{
    const CropRegion resized = Geometry::resized(start, view, {.x = -195, .y = 0}, 1.125);
    EXPECT_DOUBLE_EQ(resized.width * view.width, 80);
    EXPECT_DOUBLE_EQ(resized.height * view.height, 80 / 1.125);
}

TEST(CropOverlayGeometryTest, LimitsAResizeToTheDistanceToTheEdge)
{
    const ViewSize small = {.width = 500, .height = 500};
    const CropRegion cornered = {.x = 0.9, .y = 0.1, .width = 0.1, .height = 0.1};
    const CropRegion resized = Geometry::resized(cornered, small, {.x = -30, .y = 0}, 1);
    EXPECT_DOUBLE_EQ(resized.width * small.width, 50);
}

TEST(CropOverlayGeometryTest, LimitsAResizeByTheNearerEdgeInBothDirections)
{
    for (const ViewTranslation far : {ViewTranslation{.x = 900, .y = 0}, ViewTranslation{.x = 0, .y = 900}}) {
        const CropRegion low = Geometry::resized(start, view, far, 1.125);
        EXPECT_DOUBLE_EQ(low.height * view.height, 400) << "the space to the bottom edge";
        EXPECT_DOUBLE_EQ(low.width * view.width, 450);
        const CropRegion right = {.x = 0.7, .y = 0.2, .width = 0.225, .height = 0.4};
        const CropRegion narrow = Geometry::resized(right, view, far, 1.125);
        EXPECT_DOUBLE_EQ(narrow.width * view.width, 300) << "the space to the right edge";
        EXPECT_DOUBLE_EQ(narrow.height * view.height, 300 / 1.125);
    }
}

TEST(CropOverlayGeometryTest, ChangesTheAspectRatioAtTheMinimumSideLength)
{
    const ViewSize large = {.width = 2000, .height = 1000};
    const CropRegion resized =
        Geometry::resized({.x = 0, .y = 0, .width = 0.5, .height = 0.5}, large, {.x = -2000, .y = 0}, 1);
    EXPECT_EQ(resized.width, 0.06) << "80 points are 0.04 of the width";
    EXPECT_DOUBLE_EQ(resized.height, 0.08);
}

TEST(CropOverlayGeometryTest, ReturnsTheStartRegionForAnEmptyViewOrAspect)
{
    EXPECT_EQ(Geometry::moved(start, {}, {.x = 5, .y = 5}), start);
    EXPECT_EQ(Geometry::resized(start, {}, {.x = 5, .y = 5}, 1), start);
    EXPECT_EQ(Geometry::resized(start, view, {.x = 5, .y = 5}, 0), start);
}

RC_GTEST_PROP(CropOverlayGeometryProperty, MovingKeepsTheSizeAndStaysInTheFrame, ())
{
    const CropRegion region = anyRegion();
    const CropRegion moved = Geometry::moved(region, anyView(), anyTranslation());
    RC_ASSERT(isInFrame(moved));
    RC_ASSERT(moved.width == region.width);
    RC_ASSERT(moved.height == region.height);
}

RC_GTEST_PROP(CropOverlayGeometryProperty, MovingByNothingReturnsTheStartRegion, ())
{
    const CropRegion region = anyRegion();
    RC_ASSERT(Geometry::moved(region, anyView(), {}) == region);
}

RC_GTEST_PROP(CropOverlayGeometryProperty, ResizingStaysInTheFrameAndKeepsTheUpperLeftCornerUnlessClamped, ())
{
    const CropRegion region = anyRegion();
    const CropRegion resized = Geometry::resized(region, anyView(), anyTranslation(), anyBetween(0.2, 5));
    RC_ASSERT(isInFrame(resized));
    RC_ASSERT(resized.x == std::min(region.x, 1 - resized.width));
    RC_ASSERT(resized.y == std::min(region.y, 1 - resized.height));
}

RC_GTEST_PROP(CropOverlayGeometryProperty, ResizingByNothingReturnsTheStartRegion, ())
{
    const ViewSize anySize = anyView();
    const double aspect = anyBetween(0.2, 5);
    const CropRegion region = Geometry::resized(anyRegion(), anySize, anyTranslation(), aspect);
    RC_PRE(region.width > 0.06 && region.height > 0.06);
    const CropRegion again = Geometry::resized(region, anySize, {}, aspect);
    RC_ASSERT(again.x == region.x && again.y == region.y);
    RC_ASSERT(std::abs(again.width - region.width) < 1e-12);
    RC_ASSERT(std::abs(again.height - region.height) < 1e-12);
}

RC_GTEST_PROP(CropOverlayGeometryProperty, ResizingKeeps80PointsOrAllTheSpaceThereIs, ())
{
    const ViewSize anySize = anyView();
    const double aspect = anyBetween(0.2, 5);
    const CropRegion region = anyRegion();
    const CropRegion resized = Geometry::resized(region, anySize, anyTranslation(), aspect);
    const double room = std::min(anySize.width * (1 - region.x), anySize.height * (1 - region.y) * aspect);
    RC_ASSERT(resized.width * anySize.width > std::min(80.0, room) - 1e-9);
}

RC_GTEST_PROP(CropOverlayGeometryProperty, ResizingKeepsThePanelAspectAboveTheMinimumSideLength, ())
{
    const ViewSize anySize = anyView();
    const double aspect = anyBetween(0.2, 5);
    const CropRegion resized = Geometry::resized(anyRegion(), anySize, anyTranslation(), aspect);
    RC_PRE(resized.width > 0.06 && resized.height > 0.06);
    const double shape = resized.width * anySize.width / (resized.height * anySize.height);
    RC_ASSERT(std::abs(shape / aspect - 1) < 1e-9);
}

} // namespace

} // namespace stackreel
