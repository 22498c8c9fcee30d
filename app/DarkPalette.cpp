#include "app/DarkPalette.h"

namespace stackreel
{

QPalette darkPalette()
{
    const QColor panel(0x18, 0x1c, 0x22);
    const QColor graphite(0x0e, 0x11, 0x14);
    const QColor control(0x2a, 0x2f, 0x37);
    const QColor coral(0xff, 0x5a, 0x3d);
    const QColor faint(0x8a, 0x8f, 0x98);

    QPalette palette(control, panel);
    palette.setColor(QPalette::Base, graphite);
    palette.setColor(QPalette::AlternateBase, panel);
    palette.setColor(QPalette::ToolTipBase, control);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Link, coral);
    palette.setColor(QPalette::Highlight, coral);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace stackreel
