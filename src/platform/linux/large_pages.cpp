#include "platform/large_pages.h"

#include <sys/mman.h>

void UseLargePages(void* memory, qint64 bytes) {
    // A wish: a system without them goes on with small ones.
    (void)madvise(memory, static_cast<size_t>(bytes), MADV_HUGEPAGE);
}
