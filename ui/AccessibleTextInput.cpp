#include "ui/AccessibleTextInput.h"

#include "desktop/accessibility/AccessibleLineText.h"

#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

namespace stackreel
{

namespace
{

/// The accessible interface of a text field. The field has the properties of `TextInput`, and a property
/// `title`, which is its accessible name.
class AccessibleTextInput : public QAccessibleObject,
                            public AccessibleLineText,
                            public QAccessibleActionInterface
{
public:
    explicit AccessibleTextInput(QQuickItem* item) : QAccessibleObject(item) {}

    QWindow* window() const override { return item().window(); }
    QAccessibleInterface* parent() const override
    {
        for (QQuickItem* above = item().parentItem(); above != nullptr; above = above->parentItem())
            if (QAccessibleInterface* found = QAccessible::queryAccessibleInterface(above))
                return found;
        return QAccessible::queryAccessibleInterface(item().window());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::EditableText; }

    QRect rect() const override
    {
        if (item().window() == nullptr || !item().isVisible())
            return {};
        const QPointF corner = item().mapToGlobal(QPointF());
        return {corner.toPoint(), item().size().toSize()};
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !item().isVisible() || item().window() == nullptr || !item().window()->isVisible();
        state.focusable = true;
        state.focused = item().hasActiveFocus();
        state.editable = true;
        state.selectableText = true;
        return state;
    }

    QString text(QAccessible::Text which) const override
    {
        if (which == QAccessible::Value)
            return line();
        return which == QAccessible::Name ? item().property("title").toString() : QString();
    }
    using AccessibleLineText::text;
    void setText(QAccessible::Text which, const QString& text) override
    {
        if (which == QAccessible::Value)
            setLine(text);
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        if (type == QAccessible::EditableTextInterface)
            return static_cast<QAccessibleEditableTextInterface*>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        return QAccessibleObject::interface_cast(type);
    }

    QStringList actionNames() const override { return {setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (action == setFocusAction())
            item().forceActiveFocus();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

protected:
    QString line() const override { return item().property("text").toString(); }
    void setLine(const QString& text) override { item().setProperty("text", text); }
    int cursor() const override { return item().property("cursorPosition").toInt(); }
    Range selected() const override
    {
        return {.start = item().property("selectionStart").toInt(),
                .end = item().property("selectionEnd").toInt()};
    }
    void select(int start, int end) override
    {
        QMetaObject::invokeMethod(&item(), "select", Q_ARG(int, start), Q_ARG(int, end));
    }

private:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }
};

QAccessibleInterface* accessibleTextInput(const QString& className, QObject* object)
{
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (className != QLatin1String("QQuickTextInput") || item == nullptr)
        return nullptr;
    return new AccessibleTextInput(item);
}

} // namespace

void installAccessibleTextInput()
{
    QAccessible::installFactory(accessibleTextInput);
}

} // namespace stackreel
