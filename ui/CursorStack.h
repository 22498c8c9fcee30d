#pragma once

#include <Qt>

#include <vector>

namespace stackreel
{

/// Pointer cursors as one view asks for them: those pushed and not yet popped, the arrow below them all, and
/// the one shown. Every push needs its pop.
class CursorStack
{
public:
    /// Shows a shape until it is popped.
    void push(Qt::CursorShape shape);
    /// Shows again what was pushed before. Without a push there is nothing to pop, and the arrow stays.
    void pop();
    /// Shows a shape until the next push, pop or set, leaving what was pushed as it is.
    void set(Qt::CursorShape shape) { m_shown = shape; }

    Qt::CursorShape shown() const { return m_shown; }
    std::size_t pushed() const { return m_pushed.size(); }

private:
    std::vector<Qt::CursorShape> m_pushed;
    Qt::CursorShape m_shown = Qt::ArrowCursor;
};

} // namespace stackreel
