#include "ui/geometry/SpringMotion.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace stackreel
{

namespace
{

constexpr SpringMotion spring;

TEST(SpringMotionTest, StartsWithoutAJumpAndEndsAtTheTarget)
{
    EXPECT_EQ(spring.after({.value = 1}, 1.1, 0), (SpringState{.value = 1}));
    const SpringState late = spring.after({.value = 1}, 1.1, 2);
    EXPECT_NEAR(late.value, 1.1, 1e-9);
    EXPECT_NEAR(late.velocity, 0, 1e-9);
}

// The overshoot of a damped oscillator is exp(-πζ / √(1 - ζ²)), half a damped period after the start.
TEST(SpringMotionTest, OvershootsByItsDampingHalfAPeriodAfterTheStart)
{
    const double root = std::sqrt(1 - 0.66 * 0.66);
    const double halfPeriod = 0.18 / 2 / root;
    const SpringState top = spring.after({}, 1, halfPeriod);
    EXPECT_NEAR(top.value, 1 + std::exp(-std::numbers::pi * 0.66 / root), 1e-12);
    EXPECT_NEAR(top.velocity, 0, 1e-12);
    double largest = 0;
    for (double time = 0; time < 1; time += 0.001)
        largest = std::max(largest, spring.after({}, 1, time).value);
    EXPECT_NEAR(largest, top.value, 1e-4);
}

RC_GTEST_PROP(SpringMotionProperty, TheFrameRateDoesNotChangeTheMotion, ())
{
    const SpringState start = {.value = *rc::gen::inRange(-100, 100) / 10.0,
                               .velocity = *rc::gen::inRange(-100, 100) / 10.0};
    const double first = *rc::gen::inRange(0, 200) / 1000.0;
    const double second = *rc::gen::inRange(0, 200) / 1000.0;
    const SpringState inSteps = spring.after(spring.after(start, 3, first), 3, second);
    const SpringState atOnce = spring.after(start, 3, first + second);
    RC_ASSERT(std::abs(inSteps.value - atOnce.value) < 1e-9);
    RC_ASSERT(std::abs(inSteps.velocity - atOnce.velocity) < 1e-6);
}

} // namespace

} // namespace stackreel
