#include "platform/LargeBlocks.h"

#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace stackreel
{

void returnLargeBlocksAtOnce()
{
#if defined(__GLIBC__)
    // Setting the threshold makes it constant. By default it grows to the largest block ever freed.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

} // namespace stackreel
