#pragma once

namespace stackreel
{

/// Has fields of one line in dialogs (`QLineEdit`) tell their text by `LineText`. To be called once the
/// application is there, so that it goes before the toolkit's own; further calls do nothing. Main thread.
void installLineEditAccess();

} // namespace stackreel
