#pragma once

#include <QPalette>

namespace stackreel
{

/// The colours of the toolkit's own dialogs, so that they match the window, which is always dark.
QPalette darkPalette();

} // namespace stackreel
