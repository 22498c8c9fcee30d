#pragma once

#include <Qt>

#include <vector>

namespace stackreel
{

/// The cursor shapes of one view: a stack of shapes, with the arrow at the bottom, and the shape that is
/// shown. Each `push` needs one `pop`.
class CursorStack
{
public:
    /// Shows a shape until it is popped.
    void push(Qt::CursorShape shape);
    /// Removes the topmost shape and shows the one below it, or the arrow if no shape is left.
    void pop();
    /// Shows a shape until the next call of `push`, `pop` or `set`. Does not change the stack.
    void set(Qt::CursorShape shape) { m_current = shape; }

    Qt::CursorShape current() const { return m_current; }
    std::size_t depth() const { return m_stack.size(); }

private:
    std::vector<Qt::CursorShape> m_stack;
    Qt::CursorShape m_current = Qt::ArrowCursor;
};

} // namespace stackreel
