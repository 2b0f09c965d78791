#include "platform/large_pages.h"

#include <cerrno>

#include <sys/mman.h>

void PreferLargePage(void* memory) {
#ifdef MADV_HUGEPAGE
  const int former = errno;
  if (madvise(memory, kLargePageSize, MADV_HUGEPAGE) != 0) errno = former;
#else
  static_cast<void>(memory);
#endif
}
