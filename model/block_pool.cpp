#include "model/block_pool.h"

#include <algorithm>

namespace {

constexpr size_t kLargestSlab = size_t{1} << 21;
constexpr size_t kAlignment = alignof(std::max_align_t);

size_t AlignmentOf(size_t slabSize) { return slabSize == kLargestSlab ? kLargestSlab : kAlignment; }

}  // namespace

BlockPool::~BlockPool() {
  for (const Slab& slab : m_slabs) {
    if (slab.memory) m_source->deallocate(slab.memory, slab.size, AlignmentOf(slab.size));
  }
}

void BlockPool::AddSlab() {
  const size_t size = std::max(m_size, sizeof(Returned));
  m_stride = (size + kAlignment - 1) / kAlignment * kAlignment;
  m_slabSize = std::max(m_stride, std::min(2 * m_slabSize, kLargestSlab));
  Slab& slab = m_slabs.emplace_back();
  slab.memory = m_source->allocate(m_slabSize, AlignmentOf(m_slabSize));
  slab.size = m_slabSize;
  m_next = static_cast<std::byte*>(slab.memory);
  m_end = m_next + m_slabSize / m_stride * m_stride;
}
