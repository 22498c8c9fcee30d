#pragma once

namespace stackreel
{

/// Has the window's text fields tell their text by `AccessibleLineText`. Further calls do nothing. Main
/// thread.
void installTextInputAccess();

} // namespace stackreel
