#pragma once

namespace stackreel
{

/// Asks the system's scheduler to run the calling thread as soon as it wakes, in place of threads that
/// compute; for threads that work for moments only. A request: a system that does not know it goes on as
/// before.
void runPromptly();

} // namespace stackreel
