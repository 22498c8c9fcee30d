#include "ui/MotionPreference.h"

#include "tests/support/Awaited.h"
#include "tests/support/MessageBus.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/ui/views/FakeSettingsPortal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace stackreel
{

namespace
{

/// A desktop with an empty settings folder and no session bus.
class MotionPreferenceTest : public testing::Test
{
protected:
    void write(const std::string& file, const std::string& text) const { m_configuration.write(file, text); }

private:
    TemporaryDirectory m_configuration;
    ScopedEnvironment m_home{"XDG_CONFIG_HOME", m_configuration.path().string()};
    ScopedEnvironment m_bus{"DBUS_SESSION_BUS_ADDRESS", {}};
    ScopedEnvironment m_setting{"STACKREEL_REDUCED_MOTION", {}};
};

TEST_F(MotionPreferenceTest, MotionIsNotReducedByDefault)
{
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, ReadsGtksSettingWrittenAsFalse)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, ReadsGtksSettingWrittenAsZero)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, MotionIsNotReducedWhenGtkEnablesAnimations)
{
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=1\n");
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, MotionIsReducedByPlasmasSettingOfZero)
{
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, MotionIsNotReducedByFastAnimationsInPlasma)
{
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0.5\n");
    EXPECT_FALSE(MotionPreference().isReduced());
}

TEST_F(MotionPreferenceTest, TheEnvironmentVariableOverridesTheDesktopSettings)
{
    {
        const ScopedEnvironment setting("STACKREEL_REDUCED_MOTION", "1");
        EXPECT_TRUE(MotionPreference().isReduced());
    }
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    const ScopedEnvironment setting("STACKREEL_REDUCED_MOTION", "0");
    EXPECT_FALSE(MotionPreference().isReduced());
}

/// A desktop with an empty settings folder and a session bus with a fake portal.
class PortalTest : public MotionPreferenceTest
{
protected:
    void SetUp() override
    {
        auto portal = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("portal"));
        ASSERT_TRUE(
            portal.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &m_portal,
                                  QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        ASSERT_TRUE(portal.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    std::unique_ptr<MotionPreference> preference()
    {
        return std::make_unique<MotionPreference>(
            [this] { return QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("program")); });
    }
    /// Waits until the portal has been queried and all messages sent so far have been received.
    void settle()
    {
        ASSERT_TRUE(eventually([this] { return m_portal.asked > 0; }));
        const QDBusConnection program(QStringLiteral("program"));
        // The bus keeps the order of messages, so the reply to this call arrives after all earlier ones.
        bool answered = false;
        QDBusMessage last = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                           QStringLiteral("/org/freedesktop/portal/desktop"),
                                                           QStringLiteral("org.freedesktop.portal.Settings"),
                                                           QStringLiteral("Read"));
        last << QString() << QString();
        const QDBusPendingCallWatcher watcher(program.asyncCall(last));
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, [&answered] { answered = true; });
        ASSERT_TRUE(eventually([&answered] { return answered; }));
    }

    FakeSettingsPortal m_portal;

private:
    MessageBus m_bus;
};

const auto group = QStringLiteral("org.gnome.desktop.interface");
const auto key = QStringLiteral("enable-animations");

TEST_F(PortalTest, AppliesGnomesSettingAsynchronously)
{
    m_portal.animations = false;
    const auto setting = preference();
    EXPECT_FALSE(setting->isReduced());
    EXPECT_TRUE(eventually([&] { return setting->isReduced(); }));
}

TEST_F(PortalTest, FollowsChangesOfGnomesSetting)
{
    const auto setting = preference();
    int changes = 0;
    QObject::connect(setting.get(), &MotionPreference::reducedChanged, [&changes] { ++changes; });
    settle();
    EXPECT_FALSE(setting->isReduced());
    m_portal.change(group, key, false);
    EXPECT_TRUE(eventually([&] { return setting->isReduced(); }));
    m_portal.change(group, key, true);
    EXPECT_TRUE(eventually([&] { return !setting->isReduced(); }));
    EXPECT_EQ(changes, 2);
}

TEST_F(PortalTest, IgnoresOtherSettings)
{
    const auto setting = preference();
    bool changed = false;
    QObject::connect(setting.get(), &MotionPreference::reducedChanged, [&changed] { changed = true; });
    settle();
    m_portal.change(QStringLiteral("org.gnome.desktop.sound"), key, false);
    m_portal.change(group, QStringLiteral("enable-hot-corners"), false);
    m_portal.change(group, key, QString());
    settle();
    EXPECT_FALSE(changed);
}

TEST_F(PortalTest, StaysReducedByAFileWhenGnomeEnablesAnimations)
{
    write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    const auto setting = preference();
    settle();
    EXPECT_TRUE(setting->isReduced());
}

TEST_F(PortalTest, IsNotQueriedWhenTheEnvironmentVariableIsSet)
{
    const ScopedEnvironment decided("STACKREEL_REDUCED_MOTION", "0");
    bool asked = false;
    const MotionPreference setting([&asked] {
        asked = true;
        return QDBusConnection(QString());
    });
    EXPECT_FALSE(asked);
}

} // namespace

} // namespace stackreel
