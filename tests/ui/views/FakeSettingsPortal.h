#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace stackreel
{

/// The desktop portal's settings, of which it knows one.
class FakeSettingsPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    bool animations = true;
    int asked = 0;

    /// Tells that a setting is another one now.
    void change(const QString& group, const QString& key, const QVariant& value)
    {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

public Q_SLOTS:
    /// The real one wraps its answer twice, too.
    QDBusVariant Read(const QString& group, const QString& key)
    {
        ++asked;
        if (group == QLatin1String("org.gnome.desktop.interface") &&
            key == QLatin1String("enable-animations"))
            return QDBusVariant(QVariant::fromValue(QDBusVariant(animations)));
        return QDBusVariant(QVariant::fromValue(QDBusVariant(QString())));
    }
};

} // namespace stackreel
