#pragma once

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <fcntl.h>
#include <unistd.h>

namespace stackreel
{

/// logind as far as locks go: gives out one end of a pipe, which is closed with the last copy of it.
class FakeLogind : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")
public:
    bool refuses = false;
    QStringList asked;
    int readEnd = -1;

    /// Whether somebody holds the lock that was given out last.
    bool isHeld() const
    {
        char byte = 0;
        return readEnd >= 0 && ::read(readEnd, &byte, 1) != 0;
    }
    ~FakeLogind() override { ::close(readEnd); }

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                    const QString& mode)
    {
        asked = QStringList{what, who, why, mode};
        if (refuses) {
            sendErrorReply(QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"), QStringLiteral("no"));
            return {};
        }
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0)
            return {};
        readEnd = ends[0];
        QDBusUnixFileDescriptor lock;
        lock.giveFileDescriptor(ends[1]);
        return lock;
    }
};

/// The desktop portal's inhibition.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")
public:
    uint flags = 0;
    QString reason;

public Q_SLOTS:
    QDBusObjectPath Inhibit(const QString& /*window*/, uint what, const QVariantMap& options)
    {
        flags = what;
        reason = options.value(QStringLiteral("reason")).toString();
        return QDBusObjectPath(QStringLiteral("/request/1"));
    }
};

/// What the portal answered with, closed to let the computer sleep again.
class FakeRequest : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")
public:
    int closed = 0;

public Q_SLOTS:
    void Close() { ++closed; }
};

} // namespace stackreel
