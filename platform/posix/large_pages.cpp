#include "platform/large_pages.h"

#include <cerrno>
#include <cstddef>

#include <sys/mman.h>

namespace {

constexpr size_t kPageSize = size_t{1} << 21;

class LargePageHeap final : public std::pmr::memory_resource {
  void* do_allocate(size_t size, size_t alignment) override {
    void* const memory = m_heap->allocate(size, alignment);
#ifdef MADV_HUGEPAGE
    // Only a hint.
    const int former = errno;
    if (size >= kPageSize && alignment >= kPageSize && madvise(memory, size, MADV_HUGEPAGE) != 0)
      errno = former;
#endif
    return memory;
  }
  void do_deallocate(void* memory, size_t size, size_t alignment) override {
    m_heap->deallocate(memory, size, alignment);
  }
  bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

  memory_resource* const m_heap = std::pmr::new_delete_resource();
};

}  // namespace

std::pmr::memory_resource& LargePages() {
  static auto& heap = *new LargePageHeap;
  return heap;
}
