#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// An item that takes the focus by Tab. `visualFocus` is true when the focus came by the keyboard, and false
/// when it came by a mouse press. Qt's controls have the same property, but on Qt 6.4 they replace a custom
/// accessible role by their own when assistive technology starts. Main thread.
class FocusItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged FINAL)

public:
    explicit FocusItem(QQuickItem* parent = nullptr);

    bool visualFocus() const { return m_visualFocus; }

Q_SIGNALS:
    void visualFocusChanged();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void setVisualFocus(bool visualFocus);

    bool m_visualFocus = false;
};

} // namespace stackreel
