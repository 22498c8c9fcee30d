#pragma once

namespace stackreel
{

/// Makes each `QLineEdit` expose its text through `AccessibleLineText`. Call it after the application is
/// created, so that this factory takes precedence over Qt's own. Further calls do nothing. Main thread.
void installAccessibleLineEdits();

} // namespace stackreel
