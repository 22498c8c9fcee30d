#include "tests/ui/shell/Menus.h"

#include <QTest>

#include <stdexcept>

namespace stackreel
{

QPoint centre(const QQuickItem& item)
{
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
}

QQuickItem& menuTitle(OfflineWindow& offline, const QString& text)
{
    for (QQuickItem* title : offline.item(QStringLiteral("menuBar")).findChildren<QQuickItem*>())
        if (title->property("text").toString() == text && title->inherits("QQuickMenuBarItem"))
            return *title;
    throw std::invalid_argument("no menu " + text.toStdString());
}

void clickMenu(OfflineWindow& offline, const QString& text)
{
    QTest::mouseClick(&offline.window(), Qt::LeftButton, Qt::NoModifier, centre(menuTitle(offline, text)));
    OfflineWindow::settle();
}

void clickItem(OfflineWindow& offline, const QString& menu, const QString& item)
{
    clickMenu(offline, menu);
    offline.click(item);
}

} // namespace stackreel
