#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <functional>

namespace stackreel
{

/// The D-Bus connections that a sleep inhibitor uses. Each is opened when it is first needed.
struct SleepServiceBuses {
    std::function<QDBusConnection()> system = &QDBusConnection::systemBus;
    std::function<QDBusConnection()> session = &QDBusConnection::sessionBus;
};

/// Keeps the computer from going to sleep. Takes a lock from logind, which is released even if this process
/// crashes. Uses the desktop portal if logind refuses or is missing. A failure is silent: the computer then
/// goes to sleep as usual. Main thread.
class SleepInhibitor : public QObject
{
    Q_OBJECT
public:
    /// `reason` is a few words that the desktop shows to the user.
    explicit SleepInhibitor(QString reason, SleepServiceBuses buses = {}, QObject* parent = nullptr);
    ~SleepInhibitor() override;

    /// Inhibits or allows sleep. The effect is asynchronous; the last call wins.
    void setInhibited(bool inhibited);

private:
    void inhibitThroughLogind();
    void inhibitThroughPortal();
    void release();

    QString m_reason;
    SleepServiceBuses m_buses;
    bool m_inhibited = false;
    quint64 m_generation = 0; ///< incremented when `m_inhibited` changes, to recognise replies to older calls
    QDBusUnixFileDescriptor m_lock;
    QDBusObjectPath m_portalRequest;
};

} // namespace stackreel
