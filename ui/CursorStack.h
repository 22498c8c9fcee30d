#pragma once

#include <Qt>

#include <vector>

namespace stackreel
{

/// The cursor shapes of one view: a stack of pushed shapes over the arrow, and the shape shown now. Each
/// `push` needs one `pop`.
class CursorStack
{
public:
    /// Shows a shape until it is popped.
    void push(Qt::CursorShape shape);
    /// Shows the previous shape of the stack, or the arrow when the stack is empty.
    void pop();
    /// Shows a shape until the next push, pop or set. Does not change the stack.
    void set(Qt::CursorShape shape) { m_current = shape; }

    Qt::CursorShape current() const { return m_current; }
    std::size_t depth() const { return m_stack.size(); }

private:
    std::vector<Qt::CursorShape> m_stack;
    Qt::CursorShape m_current = Qt::ArrowCursor;
};

} // namespace stackreel
