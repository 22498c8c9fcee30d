#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace stackreel
{

/// Whether the user asked the desktop for less motion. Known from the first moment where it is written in a
/// file (GTK's and Plasma's settings) or in the environment (`STACKREEL_REDUCED_MOTION`, 1 or 0, which
/// overrides the rest); GNOME's answer comes from the desktop portal a little later, and is followed when it
/// changes. Main thread.
class MotionPreference : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ isReduced NOTIFY reducedChanged FINAL)

public:
    explicit MotionPreference(QObject* parent = nullptr);
    /// `bus` returns the message bus to find the portal on, instead of the session bus. It is not called when
    /// the environment variable is set.
    explicit MotionPreference(const std::function<QDBusConnection()>& bus, QObject* parent = nullptr);

    bool isReduced() const { return m_reduced; }

Q_SIGNALS:
    void reducedChanged();

private Q_SLOTS:
    void followPortal(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void askPortal(QDBusConnection bus);
    void setReduced(bool reduced);

    bool m_reduced = false;
};

} // namespace stackreel
