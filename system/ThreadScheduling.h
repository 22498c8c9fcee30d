#pragma once

namespace stackreel
{

/// Requests the shortest time slice from the scheduler, so that the calling thread, as soon as it wakes, runs
/// before threads that compute. Use it for threads that only run briefly. Has no effect on systems that do
/// not support it.
void requestShortTimeSlice();

} // namespace stackreel
