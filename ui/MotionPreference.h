#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace stackreel
{

/// Whether the user prefers reduced motion. The environment variable `STACKREEL_REDUCED_MOTION` (1 or 0)
/// overrides all other sources. The settings files of GTK and Plasma are read by the constructor. GNOME's
/// setting is read from the desktop portal asynchronously, and later changes of it are followed. Main thread.
class MotionPreference : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ isReduced NOTIFY reducedChanged FINAL)

public:
    explicit MotionPreference(QObject* parent = nullptr);
    /// `bus` returns the message bus on which the portal is, which tests replace. It is not called if the
    /// environment variable is set.
    explicit MotionPreference(const std::function<QDBusConnection()>& bus, QObject* parent = nullptr);

    bool isReduced() const { return m_reduced; }

Q_SIGNALS:
    void reducedChanged();

private Q_SLOTS:
    void applyPortalSetting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void queryPortal(QDBusConnection bus);
    void setReduced(bool reduced);

    bool m_reduced = false;
};

} // namespace stackreel
