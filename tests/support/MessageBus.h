#pragma once

#include <QProcess>
#include <QString>

namespace stackreel
{

/// A message bus of a test's own, for as long as the object lives.
class MessageBus
{
public:
    /// Starts this program as the bus, and again when it ends before it is ready. Throws `std::runtime_error`
    /// with what the program wrote to its standard error when it does not come up.
    explicit MessageBus(const QString& program = QStringLiteral("dbus-daemon"));
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;
    ~MessageBus();

    /// For `QDBusConnection::connectToBus`.
    const QString& address() const { return m_address; }

private:
    void stop();

    QProcess m_daemon;
    QString m_address;
};

} // namespace stackreel
