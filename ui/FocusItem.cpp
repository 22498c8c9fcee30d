#include "ui/FocusItem.h"

namespace stackreel
{

FocusItem::FocusItem(QQuickItem* parent) : QQuickItem(parent)
{
    setActiveFocusOnTab(true);
}

void FocusItem::focusInEvent(QFocusEvent* event)
{
    QQuickItem::focusInEvent(event);
    // When the item gets the focus back from another window or a popup, its visual focus stays as it was.
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                       reason == Qt::ShortcutFocusReason);
}

void FocusItem::focusOutEvent(QFocusEvent* event)
{
    QQuickItem::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        setVisualFocus(false);
}

void FocusItem::setVisualFocus(bool visualFocus)
{
    if (visualFocus == m_visualFocus)
        return;
    m_visualFocus = visualFocus;
    Q_EMIT visualFocusChanged();
}

} // namespace stackreel
