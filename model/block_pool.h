#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <new>
#include <type_traits>
#include <vector>

/// Memory for many blocks of one size, which it frees together. It asks for them in slabs, each
/// twice as large as the one before, up to two megabytes: so a list of one point stays small, and
/// one of a million needs some hundred requests. Blocks that are given back are used again.
///
/// The slabs come from the process's default memory resource, those of two megabytes at such an
/// address: where the program has installed LargePages (platform/large_pages.h) they are one page
/// each.
class BlockPool {
 public:
  BlockPool() = default;
  ~BlockPool();
  BlockPool(const BlockPool&) = delete;
  BlockPool& operator=(const BlockPool&) = delete;

  /// A block of `size` bytes, aligned for anything. The first call sets the size of the pool's
  /// blocks; one of another size comes from the heap. Throws std::bad_alloc.
  void* Take(size_t size) {
    if (m_size == 0) m_size = size;
    if (size != m_size) return ::operator new(size);
    if (m_returned != nullptr) {
      void* const block = m_returned;
      m_returned = m_returned->next;
      return block;
    }
    if (m_next == m_end) AddSlab();
    void* const block = m_next;
    m_next += m_stride;
    return block;
  }

  /// Takes back what `Take` gave for `size`.
  void Return(void* block, size_t size) {
    if (size != m_size) return ::operator delete(block);
    m_returned = new (block) Returned{m_returned};
  }

 private:
  /// What stands in a block that nobody uses.
  struct Returned {
    Returned* next;
  };

  struct Slab {
    void* memory = nullptr;
    size_t size = 0;
  };

  void AddSlab();

  std::pmr::memory_resource* const m_source = std::pmr::get_default_resource();
  std::vector<Slab> m_slabs;
  std::byte* m_next = nullptr;  ///< the unused blocks of the last slab
  std::byte* m_end = nullptr;
  size_t m_size = 0;    ///< of a block as it is asked for; 0 before the first
  size_t m_stride = 0;  ///< from one block to the next
  size_t m_slabSize = 0;
  Returned* m_returned = nullptr;
};

/// Allocator of a std::deque whose blocks come from a pool. The pool must outlive the deque.
template <typename Value>
class PooledBlocks {
 public:
  using value_type = Value;

  explicit PooledBlocks(BlockPool& pool) : m_pool(&pool) {}
  template <typename Other>
  explicit PooledBlocks(const PooledBlocks<Other>& other) : m_pool(other.m_pool) {}

  Value* allocate(size_t count) {
    if constexpr (kIsIndex) {
      return std::allocator<Value>().allocate(count);
    } else {
      return static_cast<Value*>(m_pool->Take(count * sizeof(Value)));
    }
  }
  void deallocate(Value* values, size_t count) {
    if constexpr (kIsIndex) {
      std::allocator<Value>().deallocate(values, count);
    } else {
      m_pool->Return(values, count * sizeof(Value));
    }
  }

  template <typename Other>
  bool operator==(const PooledBlocks<Other>& other) const {
    return m_pool == other.m_pool;
  }

 private:
  template <typename Other>
  friend class PooledBlocks;

  // Of the blocks, which have one size; the deque's index of them grows.
  static constexpr bool kIsIndex = std::is_pointer_v<Value>;

  BlockPool* m_pool;
};
