#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <functional>

namespace stackreel
{

/// Where the services behind a sleep inhibitor are; asked for when first needed.
struct SleepServiceBuses {
    std::function<QDBusConnection()> system = &QDBusConnection::systemBus;
    std::function<QDBusConnection()> session = &QDBusConnection::sessionBus;
};

/// Keeps the computer from going to sleep while it is held. Asks logind, whose lock ends with this process
/// whatever happens to it; where that cannot be had, the desktop portal. What fails is silent: then the
/// computer sleeps when it would. Main thread.
class SleepInhibitor : public QObject
{
    Q_OBJECT
public:
    /// `reason` is what the user is told, in a few words.
    explicit SleepInhibitor(QString reason, SleepServiceBuses buses = {}, QObject* parent = nullptr);
    ~SleepInhibitor() override;

    /// Holds, or lets go. Takes effect a little later; the last call counts.
    void setHeld(bool held);

private:
    void askLogind();
    void askPortal();
    void letGo();

    QString m_reason;
    SleepServiceBuses m_buses;
    bool m_held = false;
    quint64 m_turn = 0; ///< tells the answers to a call that was since taken back
    QDBusUnixFileDescriptor m_lock;
    QDBusObjectPath m_portalRequest;
};

} // namespace stackreel
