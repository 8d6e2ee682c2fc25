#include "app/state/memory.h"

#include <cstdlib> // tells whose library it is
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace orva {

void returnLargeMemory()
{
#ifdef __GLIBC__
    // A fixed threshold: what is above it gets pages of its own. Pictures of a repaint are rarely
    // that large.
    constexpr int kLarge = 4 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLarge);
#endif
}

} // namespace orva
