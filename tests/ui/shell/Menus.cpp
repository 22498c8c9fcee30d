#include "tests/ui/shell/Menus.h"

#include <QTest>

#include <stdexcept>

namespace stackreel
{

QPoint centre(const QQuickItem& item)
{
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
}

QQuickItem& menuTitle(WindowWithFakes& window, const QString& text)
{
    for (QQuickItem* title : window.item(QStringLiteral("menuBar")).findChildren<QQuickItem*>())
        if (title->property("text").toString() == text && title->inherits("QQuickMenuBarItem"))
            return *title;
    throw std::invalid_argument("no menu " + text.toStdString());
}

void clickMenu(WindowWithFakes& window, const QString& text)
{
    QTest::mouseClick(&window.window(), Qt::LeftButton, Qt::NoModifier, centre(menuTitle(window, text)));
    WindowWithFakes::settle();
}

void clickItem(WindowWithFakes& window, const QString& menu, const QString& item)
{
    clickMenu(window, menu);
    window.click(item);
}

} // namespace stackreel
