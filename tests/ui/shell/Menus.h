#pragma once

#include "tests/support/window/OfflineWindow.h"

#include <QPoint>
#include <QString>

namespace stackreel
{

/// Where an item's middle is in its window.
QPoint centre(const QQuickItem& item);
/// What a menu is opened by; throws when there is none with this text.
QQuickItem& menuTitle(OfflineWindow& offline, const QString& text);
void clickMenu(OfflineWindow& offline, const QString& text);
/// Opens the menu with this title and clicks on one of its items.
void clickItem(OfflineWindow& offline, const QString& menu, const QString& item);

} // namespace stackreel
