#include "ui/DragCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace stackreel
{

void DragCursor::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    if (active)
        QGuiApplication::setOverrideCursor(m_shape);
    else
        QGuiApplication::restoreOverrideCursor();
    Q_EMIT activeChanged();
}

void DragCursor::setShape(Qt::CursorShape shape)
{
    if (shape == m_shape)
        return;
    m_shape = shape;
    if (m_active)
        QGuiApplication::changeOverrideCursor(shape);
    Q_EMIT shapeChanged();
}

} // namespace stackreel
