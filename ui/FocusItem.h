#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// An item that takes the focus by Tab and knows whether to show it: when it came by the keyboard, but not
/// when it came by a press. (The toolkit's controls know that too, but on Qt 6.4 they replace an accessible
/// role that is not their own once assistive technology starts.) Main thread.
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
