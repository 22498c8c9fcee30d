#include "tests/support/ScopedEnvironment.h"
#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

namespace
{

/// A base class of the test, so that the variable is set before the window, a member of the other base class,
/// is created.
struct ReducedMotionEnvironment {
    ScopedEnvironment setting{"STACKREEL_REDUCED_MOTION", "1"};
};

class ReducedMotionTest : private ReducedMotionEnvironment, public ViewsTest
{
protected:
    /// The centre of the trim end handle.
    QPoint handle() { return centre(item("trimEndHandle")); }
};

TEST_F(ReducedMotionTest, AHoveredHandleGrowsWithoutAnimation)
{
    enter(WindowModel::Ready);
    moveTo(handle());
    EXPECT_EQ(item("trimEndHandle").property("growth").toDouble(), 1.1);
}

TEST_F(ReducedMotionTest, TheSwitchTogglesWithoutAnimation)
{
    click("audioSwitch");
    EXPECT_EQ(child("audioSwitch", "knob").x(), 2);
}

TEST_F(ReducedMotionTest, TheProgressBarFadesInItsMiddle)
{
    enter(WindowModel::Exporting);
    const QQuickItem& segment = child("exportProgress", "segment");
    EXPECT_TRUE(becomesTrue([&] { return segment.opacity() < 0.9; }));
    EXPECT_EQ(segment.property("travels"), false);
    EXPECT_EQ(segment.x(), (220 - 72) / 2.0) << "a filled bar would look like a finished export";
    EXPECT_EQ(segment.width(), 72);
}

TEST_F(ReducedMotionTest, TheSpinnerDoesNotRotate)
{
    enter(WindowModel::Preparing);
    const QQuickItem& spinner = child("preparingState", "spinner");
    EXPECT_TRUE(spinner.isVisible());
    EXPECT_EQ(spinner.property("rotates"), false);
}

using MotionTest = ViewsTest;

TEST_F(MotionTest, SpinnerAndProgressBarAreAnimatedByDefault)
{
    enter(WindowModel::Preparing);
    const QQuickItem& spinner = child("preparingState", "spinner");
    EXPECT_EQ(spinner.property("rotates"), true);
    EXPECT_TRUE(becomesTrue([&] { return spinner.property("phase").toInt() != 0; }));
    enter(WindowModel::Exporting);
    const QQuickItem& segment = child("exportProgress", "segment");
    EXPECT_EQ(segment.property("travels"), true);
    EXPECT_TRUE(becomesTrue([&] { return segment.x() > 0; }));
    EXPECT_FALSE(spinner.isVisible());
}

TEST_F(MotionTest, HiddenIndicatorsAreNotAnimated)
{
    EXPECT_EQ(child("preparingState", "spinner").property("rotates"), false);
    EXPECT_EQ(child("exportProgress", "segment").property("travels"), false);
}

} // namespace

} // namespace stackreel
