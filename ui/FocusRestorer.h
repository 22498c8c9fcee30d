#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// Restores the keyboard focus to the item of `content` that had it before a menu or dialog opened. Without
/// it, no item has the focus after the menu closes (Qt 6.4), or the item does not show that it has the focus
/// (Qt 6.8). Main thread.
class FocusRestorer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* content READ content WRITE setContent NOTIFY contentChanged FINAL)

public:
    using QObject::QObject;

    QQuickItem* content() const { return m_content; }
    void setContent(QQuickItem* content);

    /// Saves the focused item. Call it before a menu or dialog opens. If the focus is outside `content`, the
    /// saved item does not change.
    Q_INVOKABLE void save();
    /// Gives the focus back to the saved item, visibly if its focus was visible before. Does nothing if
    /// another item of `content` has the focus, or if the saved item is hidden or disabled.
    Q_INVOKABLE void restore();

    /// Sends a hover leave event to the title of a menu that closes. Does nothing if the title is no longer
    /// highlighted, because another menu is opening: the event would make the pointer enter the title again,
    /// which reopens the first menu.
    Q_INVOKABLE static void clearHover(QQuickItem* title);

Q_SIGNALS:
    void contentChanged();

private:
    /// The item inside `content` that has the focus, or null.
    QQuickItem* focused() const;

    QPointer<QQuickItem> m_content;
    QPointer<QQuickItem> m_savedItem;
    bool m_hadVisualFocus = false;
};

} // namespace stackreel
