#pragma once

#include <QProcess>
#include <QString>

namespace stackreel
{

/// A private D-Bus message bus for a test. The destructor ends it.
class MessageBus
{
public:
    /// Starts the program, and starts it again if it ends before the bus is ready. If the bus does not start,
    /// throws `std::runtime_error` with what the program wrote to standard error.
    explicit MessageBus(const QString& program = QStringLiteral("dbus-daemon"));
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;
    ~MessageBus();

    /// The address to pass to `QDBusConnection::connectToBus`.
    const QString& address() const { return m_address; }

private:
    void stop();

    QProcess m_daemon;
    QString m_address;
};

} // namespace stackreel
