#include "ui/geometry/ViewGeometry.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(FittedFrameTest, AddsBarsAtTheSidesInAWiderArea)
{
    EXPECT_EQ(fittedFrame({.width = 400, .height = 100}, 2),
              (ViewRect{.x = 100, .y = 0, .width = 200, .height = 100}));
}

TEST(FittedFrameTest, AddsBarsAboveAndBelowInANarrowerArea)
{
    EXPECT_EQ(fittedFrame({.width = 200, .height = 300}, 2),
              (ViewRect{.x = 0, .y = 100, .width = 200, .height = 100}));
}

TEST(FittedFrameTest, FillsAnAreaOfTheSameAspect)
{
    EXPECT_EQ(fittedFrame({.width = 160, .height = 80}, 2),
              (ViewRect{.x = 0, .y = 0, .width = 160, .height = 80}));
}

TEST(FittedFrameTest, FitsVeryWideAndVeryTallFrames)
{
    EXPECT_EQ(fittedFrame({.width = 568, .height = 400}, 4),
              (ViewRect{.x = 0, .y = 129, .width = 568, .height = 142}));
    EXPECT_EQ(fittedFrame({.width = 568, .height = 400}, 0.25),
              (ViewRect{.x = 234, .y = 0, .width = 100, .height = 400}));
}

TEST(FittedFrameTest, IsEmptyForAnEmptyAreaOrAspect)
{
    EXPECT_EQ(fittedFrame({.width = 0, .height = 80}, 2), ViewRect());
    EXPECT_EQ(fittedFrame({.width = 80, .height = -1}, 2), ViewRect());
    EXPECT_EQ(fittedFrame({.width = 80, .height = 80}, 0), ViewRect());
}

} // namespace

} // namespace stackreel
