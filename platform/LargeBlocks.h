#pragma once

namespace stackreel
{

/// Makes `free` return blocks of a megabyte and more to the system at once, in the whole program. By default
/// the C library keeps the memory of freed pictures, and the program grows. Any thread.
void returnLargeBlocksAtOnce();

} // namespace stackreel
