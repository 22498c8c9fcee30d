#pragma once

#include "platform/updates/StandardUpdaterController.h"

namespace stackreel
{

/// The updater's services in the application: message boxes, the user's state file and the system's clock. A
/// QApplication has to be there. Main thread.
UpdateServices standardUpdateServices();

} // namespace stackreel
