#include "ui/FocusKeeper.h"

#include <QCoreApplication>
#include <QHoverEvent>
#include <QQuickWindow>

namespace stackreel
{

void FocusKeeper::setContent(QQuickItem* content)
{
    if (content == m_content)
        return;
    m_content = content;
    m_remembered = nullptr;
    Q_EMIT contentChanged();
}

QQuickItem* FocusKeeper::focused() const
{
    if (!m_content || m_content->window() == nullptr)
        return nullptr;
    QQuickItem* const item = m_content->window()->activeFocusItem();
    return item != nullptr && m_content->isAncestorOf(item) ? item : nullptr;
}

void FocusKeeper::remember()
{
    QQuickItem* const item = focused();
    if (item == nullptr)
        return;
    m_remembered = item;
    m_showedFocus = item->property("visualFocus").toBool();
}

void FocusKeeper::giveBack()
{
    const QPointer<QQuickItem> item = m_remembered;
    m_remembered = nullptr;
    if (!item || !item->isVisible() || !item->isEnabled())
        return;
    if (focused() == nullptr)
        item->forceActiveFocus(m_showedFocus ? Qt::ShortcutFocusReason : Qt::PopupFocusReason);
    else if (focused() == item && m_showedFocus)
        item->setProperty("focusReason", Qt::ShortcutFocusReason);
}

void FocusKeeper::takePointerOff(QQuickItem* title)
{
    if (title == nullptr || !title->property("highlighted").toBool())
        return;
    const QPointF outside(-1, -1);
    QHoverEvent leave(QEvent::HoverLeave, outside, outside, outside);
    QCoreApplication::sendEvent(title, &leave);
}

} // namespace stackreel
