#pragma once

namespace stackreel
{

/// Installs an accessible interface for text fields that is based on `AccessibleLineText`. Further calls do
/// nothing. Main thread.
void installAccessibleTextInput();

} // namespace stackreel
