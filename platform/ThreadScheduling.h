#pragma once

namespace stackreel
{

/// Asks the scheduler for the shortest time slice, so that the calling thread runs as soon as it wakes,
/// before threads that compute. For threads that only run for short moments. Has no effect on a system that
/// does not support it.
void requestShortTimeSlice();

} // namespace stackreel
