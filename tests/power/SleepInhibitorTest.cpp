#include "platform/power/SleepInhibitor.h"

#include "tests/power/FakeSleepServices.h"
#include "tests/support/Awaited.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>

#include <gtest/gtest.h>

#include <optional>

namespace stackreel
{

namespace
{

/// A message bus of the test's own, with services of the test's making on it.
class SleepInhibitorTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                    QStringLiteral("--print-address")});
        ASSERT_TRUE(m_bus.waitForReadyRead(60000)) << "no message bus";
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
        m_services = QDBusConnection::connectToBus(m_address, QStringLiteral("services"));
        ASSERT_TRUE(m_services.isConnected());
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("services"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        m_bus.terminate();
        m_bus.waitForFinished(60000);
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
            return QDBusConnection::connectToBus(m_address, QStringLiteral("program"));
        };
        return std::make_unique<SleepInhibitor>(
            QStringLiteral("Exporting a video"),
            SleepServiceBuses{.system = connection, .session = connection});
    }

    QProcess m_bus;
    QString m_address;
    QDBusConnection m_services{QString()};
    FakeLogind m_logind;
    FakePortal m_portal;
    FakeRequest m_request;
};

TEST_F(SleepInhibitorTest, HoldsALockOfLogindUntilItLetsGo)
{
    offerLogind();
    const auto inhibits = inhibitor();
    inhibits->setHeld(true);
    ASSERT_TRUE(eventually([&] { return m_logind.isHeld(); }));
    const QStringList expected = {QStringLiteral("sleep:idle"), QStringLiteral("Stackreel"),
                                  QStringLiteral("Exporting a video"), QStringLiteral("block")};
    EXPECT_EQ(m_logind.asked, expected);
    inhibits->setHeld(false);
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, LetsGoWithItsEnd)
{
    offerLogind();
    auto inhibits = inhibitor();
    inhibits->setHeld(true);
    ASSERT_TRUE(eventually([&] { return m_logind.isHeld(); }));
    inhibits.reset();
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, HoldsNothingWhenTheAnswerComesTooLate)
{
    offerLogind();
    const auto inhibits = inhibitor();
    inhibits->setHeld(true);
    inhibits->setHeld(false);
    ASSERT_TRUE(eventually([&] { return !m_logind.asked.isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return !m_logind.isHeld(); }));
}

TEST_F(SleepInhibitorTest, AsksThePortalWhereLogindRefuses)
{
    offerLogind();
    m_logind.refuses = true;
    offerPortal();
    const auto inhibits = inhibitor();
    inhibits->setHeld(true);
    ASSERT_TRUE(eventually([&] { return m_portal.flags != 0; }));
    EXPECT_EQ(m_portal.flags, 12U);
    EXPECT_EQ(m_portal.reason, QStringLiteral("Exporting a video"));
    EXPECT_EQ(m_request.closed, 0);
    inhibits->setHeld(false);
    EXPECT_TRUE(eventually([&] { return m_request.closed == 1; }));
}

TEST_F(SleepInhibitorTest, AsksThePortalWhereThereIsNoLogind)
{
    offerPortal();
    const auto inhibits = inhibitor();
    inhibits->setHeld(true);
    EXPECT_TRUE(eventually([&] { return m_portal.flags != 0; }));
}

TEST_F(SleepInhibitorTest, IsSilentWhereNobodyAnswers)
{
    const auto inhibits = inhibitor();
    inhibits->setHeld(true);
    inhibits->setHeld(false);
    const auto unconnected = [] { return QDBusConnection(QStringLiteral("nothing")); };
    SleepInhibitor alone(QStringLiteral("Exporting a video"),
                         SleepServiceBuses{.system = unconnected, .session = unconnected});
    alone.setHeld(true);
    QCoreApplication::processEvents();
    alone.setHeld(false);
}

} // namespace

} // namespace stackreel
