#include "platform/accessibility/ToldChanges.h"

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

bool isToBeLeftOut(const QAccessibleEvent& event)
{
    const bool description = event.type() == QAccessible::DescriptionChanged;
    if (!description && event.type() != QAccessible::ValueChanged)
        return false;
    return isTrue(event.object(), "changesByItself") ||
           (description && isTrue(event.object(), "numberTellsMore"));
}

/// Says on the toolkit's own connection what it says, and the text. False where there is no such connection,
/// as nobody listens or as it is another toolkit than this was written for.
bool tell(const QAccessibleEvent& event, const char* property, QAccessible::Text which)
{
    const QDBusConnection bus(QStringLiteral("a11y"));
    QAccessibleInterface* const told = event.accessibleInterface();
    if (!bus.isConnected() || told == nullptr)
        return false;
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/org/a11y/atspi/accessible/") + QString::number(QAccessible::uniqueId(told)),
        QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("PropertyChange"));
    signal << QString::fromLatin1(property) << 0 << 0 << QVariant::fromValue(QDBusVariant(told->text(which)))
           << QVariantMap();
    return bus.send(signal);
}

bool isTold(const QAccessibleEvent& event)
{
    if (event.type() == QAccessible::NameChanged)
        return tell(event, "accessible-name", QAccessible::Name);
    if (event.type() == QAccessible::DescriptionChanged)
        return tell(event, "accessible-description", QAccessible::Description);
    return false;
}

void update(QAccessibleEvent* event)
{
    if (isToBeLeftOut(*event) || isTold(*event))
        return;
    // The toolkit has its own way again for this one.
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(update);
}

} // namespace

void installToldChanges()
{
    QAccessible::installUpdateHandler(update);
}

} // namespace stackreel
