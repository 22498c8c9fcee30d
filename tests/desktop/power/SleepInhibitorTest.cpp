#include "desktop/power/SleepInhibitor.h"

#include "tests/desktop/power/FakeSleepServices.h"
#include "tests/support/Awaited.h"
#include "tests/support/MessageBus.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <gtest/gtest.h>

#include <optional>

namespace stackreel
{

namespace
{

/// A private message bus with fake services.
class SleepInhibitorTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_services = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("services"));
        ASSERT_TRUE(m_services.isConnected());
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("services"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    void offerLogind()
    {
        m_services.registerObject(QStringLiteral("/org/freedesktop/login1"), &m_logind,
                                  QDBusConnection::ExportAllSlots);
        m_services.registerService(QStringLiteral("org.freedesktop.login1"));
    }
    void offerPortal()
    {
        m_services.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &m_portal,
                                  QDBusConnection::ExportAllSlots);
        m_services.registerObject(QStringLiteral("/request/1"), &m_request, QDBusConnection::ExportAllSlots);
        m_services.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    std::unique_ptr<SleepInhibitor> inhibitor()
    {
        const auto connection = [this] {
            return QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("program"));
        };
        return std::make_unique<SleepInhibitor>(
            QStringLiteral("Exporting a video"),
            SleepServiceBuses{.system = connection, .session = connection});
    }

    MessageBus m_bus;
    QDBusConnection m_services{QString()};
    FakeLogind m_logind;
    FakePortal m_portal;
    FakeRequest m_request;
};

TEST_F(SleepInhibitorTest, HoldsALogindLockUntilSleepIsAllowed)
{
    offerLogind();
    const auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    ASSERT_TRUE(eventually([&] { return m_logind.isHeld(); }));
    const QStringList expected = {QStringLiteral("sleep:idle"), QStringLiteral("Stackreel"),
                                  QStringLiteral("Exporting a video"), QStringLiteral("block")};
    EXPECT_EQ(m_logind.lastCall, expected);
    sleepInhibitor->setInhibited(false);
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, ReleasesTheLockWhenDestroyed)
{
    offerLogind();
    auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    ASSERT_TRUE(eventually([&] { return m_logind.isHeld(); }));
    sleepInhibitor.reset();
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, ReleasesALockThatArrivesAfterSleepIsAllowedAgain)
{
    offerLogind();
    const auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    sleepInhibitor->setInhibited(false);
    ASSERT_TRUE(eventually([&] { return !m_logind.lastCall.isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, UsesThePortalWhenLogindRefuses)
{
    offerLogind();
    m_logind.refuses = true;
    offerPortal();
    const auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    ASSERT_TRUE(eventually([&] { return m_portal.flags != 0; }));
    EXPECT_EQ(m_portal.flags, 12U);
    EXPECT_EQ(m_portal.reason, QStringLiteral("Exporting a video"));
    EXPECT_EQ(m_request.closeCount, 0);
    sleepInhibitor->setInhibited(false);
    EXPECT_TRUE(eventually([&] { return m_request.closeCount == 1; }));
}

TEST_F(SleepInhibitorTest, UsesThePortalWhenThereIsNoLogind)
{
    offerPortal();
    const auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    EXPECT_TRUE(eventually([&] { return m_portal.flags != 0; }));
}

TEST_F(SleepInhibitorTest, IsSilentWhenNoServiceReplies)
{
    const auto sleepInhibitor = inhibitor();
    sleepInhibitor->setInhibited(true);
    sleepInhibitor->setInhibited(false);
    const auto unconnected = [] { return QDBusConnection(QStringLiteral("nothing")); };
    SleepInhibitor alone(QStringLiteral("Exporting a video"),
                         SleepServiceBuses{.system = unconnected, .session = unconnected});
    alone.setInhibited(true);
    QCoreApplication::processEvents();
    alone.setInhibited(false);
}

} // namespace

} // namespace stackreel
