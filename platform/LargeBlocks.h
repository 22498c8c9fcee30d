#pragma once

namespace stackreel
{

/// Has the C library give blocks of a megabyte and more back to the system as soon as they are freed, for the
/// whole program. Left to itself it keeps what pictures took, to be filled again in other places. Any thread.
void returnLargeBlocksAtOnce();

} // namespace stackreel
