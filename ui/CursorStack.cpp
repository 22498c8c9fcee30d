#include "ui/CursorStack.h"

namespace stackreel
{

void CursorStack::push(Qt::CursorShape shape)
{
    m_stack.push_back(shape);
    m_current = shape;
}

void CursorStack::pop()
{
    if (!m_stack.empty())
        m_stack.pop_back();
    m_current = m_stack.empty() ? Qt::ArrowCursor : m_stack.back();
}

} // namespace stackreel
