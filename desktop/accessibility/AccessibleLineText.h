#pragma once

#include <QAccessible>

namespace stackreel
{

/// The text of a single-line field, as assistive technology reads and edits it. It replaces Qt's own
/// implementation: in Qt 6.4 that loops forever when it is asked for the word or sentence at the end of a
/// text. A screen reader asks for them when the cursor is moved to the end word by word. Offsets are in
/// UTF-16 units. Main thread.
class AccessibleLineText : public QAccessibleTextInterface, public QAccessibleEditableTextInterface
{
public:
    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override { select(start, end); }
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override { return cursor(); }
    void setCursorPosition(int position) override { select(position, position); }
    QString text(int start, int end) const override;
    int characterCount() const override { return static_cast<int>(line().size()); }
    /// At the end of the line there is no word, sentence or character: the returned text is empty.
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int start, int end) override { select(start, end); }
    QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override { replaceText(start, end, {}); }
    void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
    void replaceText(int start, int end, const QString& text) override;

protected:
    struct Range {
        int start = 0;
        int end = 0;
    };

    virtual QString line() const = 0;
    virtual void setLine(const QString& text) = 0;
    virtual int cursor() const = 0;
    /// The selected range; an empty range when nothing is selected.
    virtual Range selected() const = 0;
    /// Selects from `start` to `end`, and puts the cursor at `end`.
    virtual void select(int start, int end) = 0;
};

} // namespace stackreel
