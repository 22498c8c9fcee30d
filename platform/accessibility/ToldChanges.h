#pragma once

namespace stackreel
{

/// Looks after what assistive technology is told of changes:
///
/// - A new name or description is told with its text. Qt 6.4 leaves that out, and screen readers stay silent,
///   which say the new text of what has the focus.
/// - An object whose property `changesByItself` is true, such as a playhead while it runs, tells of no new
///   value and description, or it would be read out without an end.
/// - One whose property `numberTellsMore` is true tells of its new value and not of a new description.
///
/// Further calls do nothing. Main thread.
void installToldChanges();

} // namespace stackreel
