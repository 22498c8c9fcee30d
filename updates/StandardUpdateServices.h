#pragma once

#include "updates/StandardUpdaterController.h"

namespace stackreel
{

/// The updater's services in the application: message boxes, the user's state file and the system's clock.
/// Needs a `QApplication`; main thread.
UpdateServices standardUpdateServices();

} // namespace stackreel
