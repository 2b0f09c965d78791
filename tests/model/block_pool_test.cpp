#include "model/block_pool.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <memory_resource>
#include <new>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace {

TEST(BlockPool, GivesBlocksApartFromEachOtherAndAlignedForAnything) {
  BlockPool pool;
  std::set<uintptr_t> starts;
  for (int i = 0; i < 5000; ++i) {
    void* const block = pool.Take(500);
    std::memset(block, i, 500);
    starts.insert(reinterpret_cast<uintptr_t>(block));
  }
  ASSERT_EQ(starts.size(), 5000u);
  uintptr_t former = 0;
  for (const uintptr_t start : starts) {
    EXPECT_EQ(start % alignof(std::max_align_t), 0u);
    EXPECT_GE(start - former, 500u);
    former = start;
  }
}

TEST(BlockPool, UsesReturnedBlocksAgain) {
  BlockPool pool;
  void* const block = pool.Take(64);
  pool.Return(block, 64);
  EXPECT_EQ(pool.Take(64), block);
}

TEST(BlockPool, BlocksOfAnotherSizeHaveTheirRoom) {
  BlockPool pool;
  pool.Return(pool.Take(16), 16);
  // Larger than a block, than what is left of a slab, and than any slab.
  for (const size_t size : {size_t{17}, size_t{4096}, size_t{3} << 20}) {
    void* const block = pool.Take(size);
    std::memset(block, 1, size);
    pool.Return(block, size);
  }
  EXPECT_NE(pool.Take(16), nullptr);
}

TEST(BlockPool, TakesBlocksSmallerThanItsOwnNotes) {
  BlockPool pool;
  void* const first = pool.Take(1);
  void* const second = pool.Take(1);
  pool.Return(first, 1);
  pool.Return(second, 1);
  EXPECT_EQ(pool.Take(1), second);
  EXPECT_EQ(pool.Take(1), first);
}

// Notes what is taken of the heap, and takes only so much.
class NotedHeap final : public std::pmr::memory_resource {
 public:
  NotedHeap() : m_former(std::pmr::set_default_resource(this)) {}
  ~NotedHeap() override { std::pmr::set_default_resource(m_former); }

  /// Size and alignment of what has not come back.
  std::map<void*, std::pair<size_t, size_t>> taken;
  int left = 1000;

 private:
  void* do_allocate(size_t size, size_t alignment) override {
    if (--left < 0) throw std::bad_alloc();
    void* const memory = m_former->allocate(size, alignment);
    taken[memory] = {size, alignment};
    return memory;
  }
  void do_deallocate(void* memory, size_t size, size_t alignment) override {
    EXPECT_EQ(taken[memory], std::pair(size, alignment));
    taken.erase(memory);
    m_former->deallocate(memory, size, alignment);
  }
  bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

  memory_resource* m_former;
};

TEST(BlockPool, GivesItsSlabsBackToWhereTheyCameFrom) {
  NotedHeap heap;
  {
    BlockPool pool;
    EXPECT_TRUE(heap.taken.empty());
    // Ten megabytes: slabs that grow, and then some of two megabytes each, at such an address.
    for (int i = 0; i < 20000; ++i) pool.Take(512);
    constexpr size_t kLarge = size_t{1} << 21;
    size_t large = 0;
    for (const auto& [memory, slab] : heap.taken) {
      EXPECT_LE(slab.first, kLarge);
      if (slab.first != kLarge) continue;
      ++large;
      EXPECT_EQ(slab.second, kLarge);
      EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % kLarge, 0u);
    }
    EXPECT_GE(large, 3u);
  }
  EXPECT_TRUE(heap.taken.empty());
}

TEST(BlockPool, OutlivesAHeapThatIsExhausted) {
  NotedHeap heap;
  heap.left = 1;
  BlockPool pool;
  void* const block = pool.Take(64);
  EXPECT_THROW(pool.Take(64), std::bad_alloc);
  pool.Return(block, 64);
  EXPECT_EQ(pool.Take(64), block);
  heap.left = 1;
  EXPECT_NE(pool.Take(64), nullptr);
}

}  // namespace
