#include "desktop/accessibility/AccessibleLineEdit.h"

#include "desktop/accessibility/AccessibleLineText.h"

#include <QAccessibleWidget>
#include <QLineEdit>

namespace stackreel
{

namespace
{

class AccessibleLineEdit : public QAccessibleWidget, public AccessibleLineText
{
public:
    explicit AccessibleLineEdit(QLineEdit* edit) : QAccessibleWidget(edit, QAccessible::EditableText) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectableText = true;
        state.editable = !edit().isReadOnly();
        state.readOnly = edit().isReadOnly();
        return state;
    }

    QString text(QAccessible::Text which) const override
    {
        if (which == QAccessible::Value)
            return edit().text();
        const QString text = QAccessibleWidget::text(which);
        return text.isEmpty() && which == QAccessible::Description ? edit().placeholderText() : text;
    }
    using AccessibleLineText::text;

    void setText(QAccessible::Text which, const QString& text) override
    {
        if (which == QAccessible::Value)
            edit().setText(text);
        else
            QAccessibleWidget::setText(which, text);
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        if (type == QAccessible::EditableTextInterface)
            return static_cast<QAccessibleEditableTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

protected:
    QString line() const override { return edit().text(); }
    void setLine(const QString& text) override { edit().setText(text); }
    int cursor() const override { return edit().cursorPosition(); }
    Range selected() const override
    {
        const int start = edit().selectionStart();
        return start < 0 ? Range{} : Range{.start = start, .end = edit().selectionEnd()};
    }
    void select(int start, int end) override { edit().setSelection(start, end - start); }

private:
    QLineEdit& edit() const { return *qobject_cast<QLineEdit*>(object()); }
};

/// A field that hides its text, such as a password field, keeps Qt's own interface, which does not expose the
/// text.
QAccessibleInterface* accessibleLineEdit(const QString& className, QObject* object)
{
    auto* const edit = qobject_cast<QLineEdit*>(object);
    if (className != QLatin1String("QLineEdit") || edit == nullptr || edit->echoMode() != QLineEdit::Normal)
        return nullptr;
    return new AccessibleLineEdit(edit);
}

} // namespace

void installAccessibleLineEdits()
{
    QAccessible::installFactory(accessibleLineEdit);
}

} // namespace stackreel
