#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace stackreel
{

/// A fake of the desktop portal's settings interface with a single setting.
class FakeSettingsPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    bool animations = true;
    int asked = 0;

    /// Emits the signal for a changed setting.
    void change(const QString& group, const QString& key, const QVariant& value)
    {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

public Q_SLOTS:
    /// Returns a variant inside a variant, as the real portal does.
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
