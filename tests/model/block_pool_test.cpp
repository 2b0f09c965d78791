#include "model/block_pool.h"

#include <cstdint>
#include <cstring>
#include <deque>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr size_t kBlock = 448;

TEST(BlockPool, GivesBlocksThatDontOverlap) {
  // Enough for slabs of every size, and for some that were prepared in the background.
  constexpr size_t kCount = 60000;
  BlockPool pool;
  std::vector<unsigned char*> blocks;
  for (size_t i = 0; i < kCount; ++i) {
    auto* const block = static_cast<unsigned char*>(pool.Take(kBlock));
    ASSERT_EQ(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t), 0u);
    std::memset(block, static_cast<int>(i % 251), kBlock);
    blocks.push_back(block);
  }
  for (size_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(blocks[i][0], i % 251);
    ASSERT_EQ(blocks[i][kBlock - 1], i % 251);
  }
}

TEST(BlockPool, GivesReturnedBlocksAgain) {
  BlockPool pool;
  std::set<void*> blocks;
  for (int i = 0; i < 5; ++i) blocks.insert(pool.Take(kBlock));
  ASSERT_EQ(blocks.size(), 5u);
  for (void* const block : blocks) pool.Return(block);
  std::set<void*> again;
  for (int i = 0; i < 5; ++i) again.insert(pool.Take(kBlock));
  EXPECT_EQ(again, blocks);
  EXPECT_EQ(blocks.count(pool.Take(kBlock)), 0u);
}

TEST(PooledBlocks, ServeADequeAtBothEnds) {
  BlockPool pool;
  std::deque<uint64_t, PooledBlocks<uint64_t>> queue{PooledBlocks<uint64_t>(pool)};
  uint64_t first = 0;
  for (uint64_t next = 0; next < 1000000; ++next) {
    queue.push_back(next);
    if (next % 3 != 0) {
      ASSERT_EQ(queue.front(), first++);
      queue.pop_front();
    }
  }
  ASSERT_EQ(queue.size(), 333334u);
  for (const uint64_t value : queue) ASSERT_EQ(value, first++);
}

}  // namespace
