#pragma once

#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

QColor srgb(double red, double green, double blue, double opacity = 1);
QColor white(double opacity = 1);
QColor black(double opacity = 1);

inline const QColor graphite = srgb(0.055, 0.065, 0.08);
inline const QColor panel = srgb(0.095, 0.11, 0.135);
inline const QColor stage = srgb(0.025, 0.03, 0.04);
inline const QColor signalCoral = srgb(1.0, 0.353, 0.239);
inline const QColor shellCoral = srgb(1.0, 0.72, 0.65);

/// Whether two colours are equal within the precision of 8 bits per channel.
testing::AssertionResult same(const QColor& one, const QColor& other);

/// Checks the geometry and appearance of items in the running window.
class LayoutTest : public ViewsTest
{
protected:
    /// The expected appearance of a text item.
    struct Type {
        const char* name;
        QString text;
        int pixels;
        int weight;
        QColor color;
    };

    void expect(const Type& type);
    void expectGeometry(const char* name, const QRectF& expected);

    double contentHeight() { return item("contentView").height(); }
    double workspaceTop() { return geometry("header").bottom() + 18; }
};

} // namespace stackreel
