#include "platform/power/SleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace stackreel
{

namespace
{

const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");

QDBusMessage logindCall(const QString& reason)
{
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("Stackreel") << reason << QStringLiteral("block");
    return call;
}

QDBusMessage portalCall(const QString& reason)
{
    constexpr uint suspend = 4;
    constexpr uint idle = 8;
    auto call = QDBusMessage::createMethodCall(
        portalService, QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"));
    call << QString() << (suspend | idle) << QVariantMap{{QStringLiteral("reason"), reason}};
    return call;
}

/// Makes the call and hands its answer over later, unless `context` is gone by then.
template <typename Answer>
void ask(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
         std::function<void(const QDBusPendingReply<Answer>&)> answered)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
                         answered(*finished);
                         finished->deleteLater();
                     });
}

void closePortalRequest(const QDBusConnection& bus, const QDBusObjectPath& request)
{
    bus.send(QDBusMessage::createMethodCall(portalService, request.path(),
                                            QStringLiteral("org.freedesktop.portal.Request"),
                                            QStringLiteral("Close")));
}

} // namespace

SleepInhibitor::SleepInhibitor(QString reason, SleepServiceBuses buses, QObject* parent)
    : QObject(parent), m_reason(std::move(reason)), m_buses(std::move(buses))
{
}

SleepInhibitor::~SleepInhibitor()
{
    letGo();
}

void SleepInhibitor::setHeld(bool held)
{
    if (held == m_held)
        return;
    m_held = held;
    ++m_turn;
    if (held)
        askLogind();
    else
        letGo();
}

void SleepInhibitor::askLogind()
{
    ask<QDBusUnixFileDescriptor>(m_buses.system(), logindCall(m_reason), this,
                                 [this, turn = m_turn](const auto& reply) {
                                     if (turn != m_turn)
                                         return; // the lock goes with the reply
                                     if (reply.isError())
                                         askPortal();
                                     else
                                         m_lock = reply.value();
                                 });
}

void SleepInhibitor::askPortal()
{
    const QDBusConnection bus = m_buses.session();
    ask<QDBusObjectPath>(bus, portalCall(m_reason), this, [this, bus, turn = m_turn](const auto& reply) {
        if (reply.isError())
            return;
        if (turn != m_turn)
            closePortalRequest(bus, reply.value());
        else
            m_portalRequest = reply.value();
    });
}

void SleepInhibitor::letGo()
{
    m_lock = {};
    if (!m_portalRequest.path().isEmpty())
        closePortalRequest(m_buses.session(), m_portalRequest);
    m_portalRequest = {};
}

} // namespace stackreel
