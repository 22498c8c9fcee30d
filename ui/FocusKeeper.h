#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// Gives the focus of the keyboard back to where it was in `content`, once the menus and dialogs that took it
/// are gone; Qt 6.4 leaves it nowhere. Main thread.
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
    /// Nothing while the content has the focus again, or when what had it is not to be seen any more. It
    /// shows its focus again if it did.
    Q_INVOKABLE void giveBack();

    /// Has the title of a menu that closes take the pointer for gone. Not the title of one that makes place
    /// for the next, which is no longer highlighted: it would be entered anew and take the menus back.
    Q_INVOKABLE static void takePointerOff(QQuickItem* title);

Q_SIGNALS:
    void contentChanged();

private:
    /// What has the focus in the content, or none.
    QQuickItem* focused() const;

    QPointer<QQuickItem> m_content;
    QPointer<QQuickItem> m_remembered;
    bool m_showedFocus = false;
};

} // namespace stackreel
