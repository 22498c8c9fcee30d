#include "desktop/accessibility/AccessibleChanges.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariantMap>

namespace stackreel
{

namespace
{

bool isTrue(QObject* object, const char* property)
{
    return object != nullptr && object->property(property).toBool();
}

bool isSuppressed(const QAccessibleEvent& event)
{
    const bool description = event.type() == QAccessible::DescriptionChanged;
    if (!description && event.type() != QAccessible::ValueChanged)
        return false;
    return isTrue(event.object(), "changesByItself") ||
           (description && isTrue(event.object(), "announcesValueOnly"));
}

/// Sends the signal that Qt would send, with the new text added, on Qt's own D-Bus connection. Returns false
/// when that connection does not exist, because no assistive technology runs or because this version of Qt
/// uses another name for it.
bool sendPropertyChange(const QAccessibleEvent& event, const char* property, QAccessible::Text which)
{
    const QDBusConnection bus(QStringLiteral("a11y"));
    QAccessibleInterface* const accessible = event.accessibleInterface();
    if (!bus.isConnected() || accessible == nullptr)
        return false;
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/org/a11y/atspi/accessible/") + QString::number(QAccessible::uniqueId(accessible)),
        QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("PropertyChange"));
    signal << QString::fromLatin1(property) << 0 << 0
           << QVariant::fromValue(QDBusVariant(accessible->text(which))) << QVariantMap();
    return bus.send(signal);
}

bool sendsChangedText(const QAccessibleEvent& event)
{
    if (event.type() == QAccessible::NameChanged)
        return sendPropertyChange(event, "accessible-name", QAccessible::Name);
    if (event.type() == QAccessible::DescriptionChanged)
        return sendPropertyChange(event, "accessible-description", QAccessible::Description);
    return false;
}

void update(QAccessibleEvent* event)
{
    if (isSuppressed(*event) || sendsChangedText(*event))
        return;
    // Qt processes an event itself only while no update handler is installed.
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(update);
}

} // namespace

void installAccessibleChanges()
{
    QAccessible::installUpdateHandler(update);
}

} // namespace stackreel
