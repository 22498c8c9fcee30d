#include "desktop/power/SleepInhibitor.h"

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

/// Makes the call without waiting. `onReply` is called with the reply, unless `context` is destroyed before
/// it arrives.
template <typename Value>
void callAsync(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
               std::function<void(const QDBusPendingReply<Value>&)> onReply)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [onReply = std::move(onReply)](QDBusPendingCallWatcher* finished) {
                         onReply(*finished);
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
    release();
}

void SleepInhibitor::setInhibited(bool inhibited)
{
    if (inhibited == m_inhibited)
        return;
    m_inhibited = inhibited;
    ++m_generation;
    if (inhibited)
        inhibitThroughLogind();
    else
        release();
}

void SleepInhibitor::inhibitThroughLogind()
{
    const auto onReply = [this, generation = m_generation](const auto& reply) {
        if (generation != m_generation)
            return; // destroying the reply releases the lock
        if (reply.isError())
            inhibitThroughPortal();
        else
            m_lock = reply.value();
    };
    callAsync<QDBusUnixFileDescriptor>(m_buses.system(), logindCall(m_reason), this, onReply);
}

void SleepInhibitor::inhibitThroughPortal()
{
    const QDBusConnection bus = m_buses.session();
    const auto onReply = [this, bus, generation = m_generation](const auto& reply) {
        if (reply.isError())
            return;
        if (generation != m_generation)
            closePortalRequest(bus, reply.value());
        else
            m_portalRequest = reply.value();
    };
    callAsync<QDBusObjectPath>(bus, portalCall(m_reason), this, onReply);
}

void SleepInhibitor::release()
{
    m_lock = {};
    if (!m_portalRequest.path().isEmpty())
        closePortalRequest(m_buses.session(), m_portalRequest);
    m_portalRequest = {};
}

} // namespace stackreel
