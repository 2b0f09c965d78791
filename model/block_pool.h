#pragma once

#include <cstddef>
#include <future>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

/// Memory for many blocks of one size, which it frees together. It asks for them in slabs, each
/// twice as large as the one before, up to a large page: so a list of one point stays small, and
/// one of a million needs some sixty requests. Large pools have their next slab prepared in the
/// background. Blocks that are given back are used again.
class BlockPool {
 public:
  BlockPool() = default;
  BlockPool(const BlockPool&) = delete;
  BlockPool& operator=(const BlockPool&) = delete;

  /// A block of `size` bytes, the same size in every call, aligned for anything. Throws
  /// std::bad_alloc.
  void* Take(size_t size) {
    if (m_returned != nullptr) {
      void* const block = m_returned;
      m_returned = m_returned->next;
      return block;
    }
    if (static_cast<size_t>(m_end - m_next) < size) AddSlab(size);
    void* const block = m_next;
    m_next += size;
    return block;
  }

  void Return(void* block) { m_returned = new (block) Returned{m_returned}; }

 private:
  /// What stands in a block that nobody uses.
  struct Returned {
    Returned* next;
  };
  struct Free {
    std::align_val_t alignment;
    Free() : alignment() {}
    explicit Free(std::align_val_t of) : alignment(of) {}
    void operator()(void* slab) const { ::operator delete(slab, alignment); }
  };

  struct Slab {
    std::unique_ptr<void, Free> memory;
    std::future<void> touched;  ///< ends before the memory does; may be none
  };

  static Slab MakeSlab(size_t size);
  void AddSlab(size_t blockSize);
  void PrepareReserve();

  std::vector<Slab> m_slabs;
  Slab m_reserve;               ///< the next slab, or none yet
  std::byte* m_next = nullptr;  ///< the unused part of the last slab
  std::byte* m_end = nullptr;
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
      m_pool->Return(values);
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
