#include "ui/MotionPreference.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QSettings>
#include <QStandardPaths>

namespace stackreel
{

namespace
{

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeKey = QStringLiteral("enable-animations");

QVariant configValue(const QString& file, const QString& key)
{
    const QString path = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file);
    return path.isEmpty() ? QVariant() : QSettings(path, QSettings::IniFormat).value(key);
}

bool isReducedInConfigFiles()
{
    const QVariant gtk =
        configValue(QStringLiteral("gtk-3.0/settings.ini"), QStringLiteral("Settings/gtk-enable-animations"));
    const QVariant plasma =
        configValue(QStringLiteral("kdeglobals"), QStringLiteral("KDE/AnimationDurationFactor"));
    return (gtk.isValid() && !gtk.toBool()) || (plasma.isValid() && plasma.toDouble() == 0);
}

QDBusConnection sessionBus()
{
    // Without an address, QtDBus would start a new bus.
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ? QDBusConnection(QString())
                                                                   : QDBusConnection::sessionBus();
}

} // namespace

MotionPreference::MotionPreference(QObject* parent) : MotionPreference(&sessionBus, parent) {}

MotionPreference::MotionPreference(const std::function<QDBusConnection()>& bus, QObject* parent)
    : QObject(parent)
{
    const QByteArray choice = qgetenv("STACKREEL_REDUCED_MOTION");
    if (!choice.isEmpty()) {
        m_reduced = choice != "0";
        return;
    }
    m_reduced = isReducedInConfigFiles();
    if (const QDBusConnection connection = bus(); connection.isConnected())
        queryPortal(connection);
}

void MotionPreference::queryPortal(QDBusConnection bus)
{
    // Qt finds the slot by the names of its parameter types, so the type must be registered first.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(applyPortalSetting(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    read << gnomeGroup << gnomeKey;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        call->deleteLater();
        // The portal returns a variant inside a variant.
        if (reply.isValid())
            applyPortalSetting(gnomeGroup, gnomeKey, reply.value().variant().value<QDBusVariant>());
    });
}

void MotionPreference::applyPortalSetting(const QString& group, const QString& key, const QDBusVariant& value)
{
    const QVariant animations = value.variant();
    if (group == gnomeGroup && key == gnomeKey && animations.typeId() == QMetaType::Bool)
        setReduced(!animations.toBool() || isReducedInConfigFiles());
}

void MotionPreference::setReduced(bool reduced)
{
    if (reduced == m_reduced)
        return;
    m_reduced = reduced;
    Q_EMIT reducedChanged();
}

} // namespace stackreel
