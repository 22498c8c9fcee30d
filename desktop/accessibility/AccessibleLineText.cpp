#include "desktop/accessibility/AccessibleLineText.h"

namespace stackreel
{

void AccessibleLineText::selection(int index, int* start, int* end) const
{
    const Range range = index == 0 ? selected() : Range{};
    *start = range.start;
    *end = range.end;
}

int AccessibleLineText::selectionCount() const
{
    const Range range = selected();
    return range.end > range.start ? 1 : 0;
}

void AccessibleLineText::removeSelection(int index)
{
    if (index == 0)
        select(cursor(), cursor());
}

void AccessibleLineText::setSelection(int index, int start, int end)
{
    if (index == 0)
        select(start, end);
}

QString AccessibleLineText::text(int start, int end) const
{
    return line().mid(start, end - start);
}

QString AccessibleLineText::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                         int* end) const
{
    const bool wholeLine = boundary == QAccessible::LineBoundary ||
                           boundary == QAccessible::ParagraphBoundary || boundary == QAccessible::NoBoundary;
    const int length = characterCount();
    if (!wholeLine && offset >= 0 && offset < length)
        return QAccessibleTextInterface::textAtOffset(offset, boundary, start, end);
    *start = wholeLine ? 0 : length;
    *end = length;
    return text(*start, *end);
}

QString AccessibleLineText::attributes(int, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

void AccessibleLineText::replaceText(int start, int end, const QString& text)
{
    QString changed = line();
    setLine(changed.replace(start, end - start, text));
}

} // namespace stackreel
