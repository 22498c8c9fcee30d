#include "ui/FocusRestorer.h"

#include <QCoreApplication>
#include <QHoverEvent>
#include <QQuickWindow>

namespace stackreel
{

void FocusRestorer::setContent(QQuickItem* content)
{
    if (content == m_content)
        return;
    m_content = content;
    m_savedItem = nullptr;
    Q_EMIT contentChanged();
}

QQuickItem* FocusRestorer::focused() const
{
    if (!m_content || m_content->window() == nullptr)
        return nullptr;
    QQuickItem* const item = m_content->window()->activeFocusItem();
    return item != nullptr && m_content->isAncestorOf(item) ? item : nullptr;
}

void FocusRestorer::save()
{
    QQuickItem* const item = focused();
    if (item == nullptr)
        return;
    m_savedItem = item;
    m_hadVisualFocus = item->property("visualFocus").toBool();
}

void FocusRestorer::restore()
{
    const QPointer<QQuickItem> item = m_savedItem;
    m_savedItem = nullptr;
    if (!item || !item->isVisible() || !item->isEnabled())
        return;
    if (focused() == nullptr)
        item->forceActiveFocus(m_hadVisualFocus ? Qt::ShortcutFocusReason : Qt::PopupFocusReason);
    else if (focused() == item && m_hadVisualFocus)
        item->setProperty("focusReason", Qt::ShortcutFocusReason);
}

void FocusRestorer::clearHover(QQuickItem* title)
{
    if (title == nullptr || !title->property("highlighted").toBool())
        return;
    const QPointF outside(-1, -1);
    QHoverEvent leave(QEvent::HoverLeave, outside, outside, outside);
    QCoreApplication::sendEvent(title, &leave);
}

} // namespace stackreel
