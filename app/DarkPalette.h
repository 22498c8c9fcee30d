#pragma once

#include <QPalette>

namespace stackreel
{

/// The colours of Qt's own dialogs. They match the main window, which is always dark.
QPalette darkPalette();

} // namespace stackreel
