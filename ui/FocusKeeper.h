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
class FocusKeeper : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* content READ content WRITE setContent NOTIFY contentChanged FINAL)

public:
    using QObject::QObject;

    QQuickItem* content() const { return m_content; }
    void setContent(QQuickItem* content);

    /// To be called before the focus is taken. Keeps what it knows while the focus is outside the content.
    Q_INVOKABLE void remember();
    /// Moves no focus that is in the content again, and gives none to an item that is hidden or disabled by
    /// now. The item shows its focus again if it did before.
    Q_INVOKABLE void giveBack();

    /// Sends a hover leave event to the title of a menu that closes. Does nothing when the title is no longer
    /// highlighted, because another menu opens then: the pointer would enter the title again and reopen its
    /// menu.
    Q_INVOKABLE static void takePointerOff(QQuickItem* title);

Q_SIGNALS:
    void contentChanged();

private:
    /// The item of the content that has the focus, or null.
    QQuickItem* focused() const;

    QPointer<QQuickItem> m_content;
    QPointer<QQuickItem> m_remembered;
    bool m_showedFocus = false;
};

} // namespace stackreel
