#pragma once

namespace stackreel
{

/// Makes `free` return every block of at least a megabyte to the system at once, in the whole program. By
/// default the C library keeps the memory of freed pictures, so the program's memory use grows. Any thread.
void returnLargeBlocksAtOnce();

} // namespace stackreel
