#pragma once

#include "tests/support/window/OfflineWindow.h"

#include <QPoint>
#include <QString>

namespace stackreel
{

/// The centre of an item in window coordinates.
QPoint centre(const QQuickItem& item);
/// The menu bar item with this text; throws when there is none.
QQuickItem& menuTitle(OfflineWindow& offline, const QString& text);
void clickMenu(OfflineWindow& offline, const QString& text);
/// Opens the menu with this title and clicks on one of its items.
void clickItem(OfflineWindow& offline, const QString& menu, const QString& item);

} // namespace stackreel
