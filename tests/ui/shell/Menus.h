#pragma once

#include "tests/support/window/WindowWithFakes.h"

#include <QPoint>
#include <QString>

namespace stackreel
{

/// The centre of an item in window coordinates.
QPoint centre(const QQuickItem& item);
/// The menu bar item with this text; throws when there is none.
QQuickItem& menuTitle(WindowWithFakes& window, const QString& text);
void clickMenu(WindowWithFakes& window, const QString& text);
/// Opens the menu with this title and clicks on one of its items.
void clickItem(WindowWithFakes& window, const QString& menu, const QString& item);

} // namespace stackreel
