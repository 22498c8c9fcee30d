#pragma once

namespace stackreel
{

/// Changes how assistive technology is notified of changed names, values and descriptions:
///
/// - The notification of a new name or description includes the new text. Qt 6.4 omits it, and a screen
///   reader then does not announce the change of the focused control.
/// - An object whose property `changesByItself` is true, such as a playhead that the user does not move,
///   sends no notification of a new value or description. A screen reader would never stop reading them out.
/// - An object whose property `announcesValueOnly` is true sends no notification of a new description.
///
/// Further calls do nothing. Main thread.
void installAccessibleChanges();

} // namespace stackreel
