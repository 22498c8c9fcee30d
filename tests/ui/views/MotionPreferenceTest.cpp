#include "ui/MotionPreference.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>

namespace stackreel
{

namespace
{

/// A desktop whose settings are those of an empty folder, and with no bus.
class MotionPreferenceTest : public testing::Test
{
protected:
    void write(const std::string& file, const std::string& text) const { m_configuration.write(file, text); }

private:
    TemporaryDirectory m_configuration;
    ScopedEnvironment m_home{"XDG_CONFIG_HOME", m_configuration.path().string()};
    ScopedEnvironment m_bus{"DBUS_SESSION_BUS_ADDRESS", {}};
    ScopedEnvironment m_wish{"STACKREEL_REDUCED_MOTION", {}};
};

TEST_F(MotionPreferenceTest, WithoutAWishThereIsMotion)
{
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, GtksSettingCountsAsAWord)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, GtksSettingCountsAsANumber)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, GtksSettingForMotionIsNoWishForLess)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=1\n");
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, PlasmasSettingCounts)
{
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, FastAnimationsAreStillWanted)
{
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0.5\n");
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, TheEnvironmentOverridesTheDesktop)
{
    {
        const ScopedEnvironment wish("STACKREEL_REDUCED_MOTION", "1");
        EXPECT_TRUE(MotionPreference().isReduced());
    }
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    const ScopedEnvironment wish("STACKREEL_REDUCED_MOTION", "0");
    EXPECT_FALSE(MotionPreference().isReduced());
}

} // namespace

} // namespace stackreel
