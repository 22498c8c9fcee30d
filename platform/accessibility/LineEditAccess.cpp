#include "platform/accessibility/LineEditAccess.h"

#include "platform/accessibility/LineText.h"

#include <QAccessibleWidget>
#include <QLineEdit>

namespace stackreel
{

namespace
{

class LineEditAccess : public QAccessibleWidget, public LineText
{
public:
    explicit LineEditAccess(QLineEdit* edit) : QAccessibleWidget(edit, QAccessible::EditableText) {}

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
        const QString told = QAccessibleWidget::text(which);
        return told.isEmpty() && which == QAccessible::Description ? edit().placeholderText() : told;
    }
    using LineText::text;

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

/// A field that hides what is typed keeps the toolkit's own, which does not tell it.
QAccessibleInterface* lineEditAccess(const QString& className, QObject* object)
{
    auto* const edit = qobject_cast<QLineEdit*>(object);
    if (className != QLatin1String("QLineEdit") || edit == nullptr || edit->echoMode() != QLineEdit::Normal)
        return nullptr;
    return new LineEditAccess(edit);
}

} // namespace

void installLineEditAccess()
{
    QAccessible::installFactory(lineEditAccess);
}

} // namespace stackreel
