#include "platform/large_pages.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

namespace {

TEST(LargePages, GivesMemoryOfEverySizeAtItsAddress) {
  constexpr size_t kPage = size_t{1} << 21;
  std::pmr::memory_resource& pages = LargePages();
  errno = 7;
  for (const size_t size : {size_t{1}, size_t{4096}, kPage, 3 * kPage}) {
    const size_t alignment = size < kPage ? 16 : kPage;
    void* const memory = pages.allocate(size, alignment);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % alignment, 0u);
    std::memset(memory, 1, size);
    pages.deallocate(memory, size, alignment);
  }
  EXPECT_EQ(errno, 7);
  EXPECT_EQ(&LargePages(), &pages);
}

}  // namespace
