#include "model/block_pool.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/large_pages.h"

namespace {

// Pools that have so many slabs will soon need another.
constexpr size_t kSlabsWithoutReserve = 16;

// The system gives memory page by page, each when it is first written to.
void TouchPages(std::byte* memory, size_t size) {
  constexpr size_t kSmallestPage = 4096;
  for (size_t offset = 0; offset < size; offset += kSmallestPage) memory[offset] = std::byte{0};
}

}  // namespace

BlockPool::Slab BlockPool::MakeSlab(size_t size) {
  const bool isLargePage = size == kLargePageSize;
  const std::align_val_t alignment{isLargePage ? kLargePageSize : alignof(std::max_align_t)};
  Slab slab;
  slab.memory = {::operator new(size, alignment), Free{alignment}};
  if (isLargePage) PreferLargePage(slab.memory.get());
  return slab;
}

void BlockPool::AddSlab(size_t blockSize) {
  m_slabSize = std::max(blockSize, std::min(2 * m_slabSize, kLargePageSize));
  m_slabs.push_back(m_reserve.memory ? std::move(m_reserve) : MakeSlab(m_slabSize));
  Slab& slab = m_slabs.back();
  if (slab.touched.valid()) slab.touched.get();
  m_next = static_cast<std::byte*>(slab.memory.get());
  m_end = m_next + m_slabSize;
  if (m_slabs.size() >= kSlabsWithoutReserve) PrepareReserve();
}

// What the system takes to clear the pages is a good part of what reading a large file costs.
void BlockPool::PrepareReserve() {
  try {
    m_reserve = MakeSlab(m_slabSize);
    auto* const memory = static_cast<std::byte*>(m_reserve.memory.get());
    m_reserve.touched = std::async(std::launch::async, TouchPages, memory, m_slabSize);
  } catch (const std::exception&) {
    // No memory or no thread is to be had now. Whether it matters shows when the slab is needed.
  }
}
