#pragma once

namespace stackreel
{

/// What the calling thread asks of the system's scheduler. Both are requests: a system that does not know
/// them goes on as before.

/// This thread works for moments only and is to run as soon as it wakes, in place of threads that compute.
void runPromptly();
/// This thread computes for long and makes way for the threads that hands and eyes wait for. Threads that it
/// starts do so too.
void runInBackground();

} // namespace stackreel
