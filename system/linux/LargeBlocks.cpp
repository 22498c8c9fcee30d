#include "system/LargeBlocks.h"

#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace stackreel
{

void returnLargeBlocksAtOnce()
{
#if defined(__GLIBC__)
    // A threshold that is set explicitly stays constant. By default it grows to the size of the largest block
    // that was ever freed.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

} // namespace stackreel
