#include "ui/SpringValue.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(SpringValueTest, TakesItsFirstTargetAtOnce)
{
    SpringValue spring;
    spring.setTarget(1);
    EXPECT_EQ(spring.value(), 1);
    EXPECT_TRUE(spring.settled());
}

TEST(SpringValueTest, MovesToALaterTargetInFramesAndSettles)
{
    SpringValue spring;
    spring.setTarget(1);
    QSignalSpy settled(&spring, &SpringValue::settledChanged);
    spring.setTarget(1.1);
    EXPECT_EQ(spring.value(), 1);
    EXPECT_FALSE(spring.settled());
    double largest = 0;
    int frames = 0;
    for (; !spring.settled() && frames < 120; ++frames) {
        spring.advance(1 / 60.0);
        largest = std::max(largest, spring.value());
    }
    EXPECT_EQ(spring.value(), 1.1);
    EXPECT_GT(largest, 1.1);
    EXPECT_LT(frames, 40);
    EXPECT_EQ(settled.count(), 2);
}

TEST(SpringValueTest, KeepsItsVelocityWhenTheTargetChanges)
{
    SpringValue spring;
    spring.setTarget(1);
    spring.setTarget(1.1);
    for (int frame = 0; frame < 4; ++frame)
        spring.advance(1 / 60.0);
    const double turned = spring.value();
    spring.setTarget(1);
    spring.advance(0.001);
    EXPECT_GT(spring.value(), turned);
}

TEST(SpringValueTest, JumpsWithoutAnimation)
{
    SpringValue spring;
    spring.setProperty("animated", false);
    spring.setTarget(1);
    spring.setTarget(1.1);
    EXPECT_EQ(spring.value(), 1.1);
    EXPECT_TRUE(spring.settled());
}

} // namespace

} // namespace stackreel
