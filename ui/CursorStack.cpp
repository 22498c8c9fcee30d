#include "ui/CursorStack.h"

namespace stackreel
{

void CursorStack::push(Qt::CursorShape shape)
{
    m_pushed.push_back(shape);
    m_shown = shape;
}

void CursorStack::pop()
{
    if (!m_pushed.empty())
        m_pushed.pop_back();
    m_shown = m_pushed.empty() ? Qt::ArrowCursor : m_pushed.back();
}

} // namespace stackreel
