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

/// A fake of logind's sleep locks. A lock is the write end of a pipe; it is released when it is closed.
class FakeLogind : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")
public:
    bool refuses = false;
    QStringList lastCall;
    int readEnd = -1;

    /// Whether the last lock is held: reading from the pipe returns 0 once its write end is closed.
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
        lastCall = QStringList{what, who, why, mode};
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

/// A fake of the desktop portal's interface for inhibiting sleep.
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

/// The request object that the portal returns. Closing it allows sleep again.
class FakeRequest : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")
public:
    int closeCount = 0;

public Q_SLOTS:
    void Close() { ++closeCount; }
};

} // namespace stackreel
