#include "ui/geometry/ViewGeometry.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(FittedFrameTest, AWiderAreaIsPillarBoxed)
{
    EXPECT_EQ(fittedFrame({.width = 400, .height = 100}, 2),
              (ViewRect{.x = 100, .y = 0, .width = 200, .height = 100}));
}

TEST(FittedFrameTest, ANarrowerAreaIsLetterBoxed)
{
    EXPECT_EQ(fittedFrame({.width = 200, .height = 300}, 2),
              (ViewRect{.x = 0, .y = 100, .width = 200, .height = 100}));
}

TEST(FittedFrameTest, AnAreaOfTheSameAspectIsFilled)
{
    EXPECT_EQ(fittedFrame({.width = 160, .height = 80}, 2),
              (ViewRect{.x = 0, .y = 0, .width = 160, .height = 80}));
}

TEST(FittedFrameTest, NothingFitsIntoNothing)
{
    EXPECT_EQ(fittedFrame({.width = 0, .height = 80}, 2), ViewRect());
    EXPECT_EQ(fittedFrame({.width = 80, .height = -1}, 2), ViewRect());
    EXPECT_EQ(fittedFrame({.width = 80, .height = 80}, 0), ViewRect());
}

} // namespace

} // namespace stackreel
