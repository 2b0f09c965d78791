#include <atomic>
#include <cstdint>
#include <new>

#include "markup/json.h"

// The values of a large document take longer to get from the heap and to give back one by one than
// to read. So they and their short lists are cut from blocks, one behind the other, and a block
// goes back as a whole with the last of what lies in it, whichever thread drops that.

namespace {

// Size of a block, and its alignment, by which a value finds the block that it lies in.
constexpr size_t kBlockSize = size_t{1} << 15;

class Block {
 public:
  static Block* Make() {
    return new (::operator new (kBlockSize, std::align_val_t{kBlockSize})) Block;
  }
  static Block* Around(void* value) {
    const size_t offset = reinterpret_cast<uintptr_t>(value) & (kBlockSize - 1);
    return reinterpret_cast<Block*>(static_cast<char*>(value) - offset);
  }

  // Room of `size` bytes more; null when the block is too full for them.
  void* Take(size_t size) {
    if (kBlockSize - m_end < size) return nullptr;
    void* const room = reinterpret_cast<char*>(this) + m_end;
    m_end += size;
    m_users.fetch_add(1, std::memory_order_relaxed);
    return room;
  }

  // One user less; the last one takes the block with it.
  void Release() {
    if (m_users.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    this->~Block();
    ::operator delete (this, std::align_val_t{kBlockSize});
  }

 private:
  Block() = default;
  ~Block() = default;

  std::atomic<size_t> m_users{1};  // what is left in it, and the thread that takes from it
  size_t m_end = sizeof(Block);    // where the next value or list goes
};

static_assert(sizeof(Block) % alignof(CJsonValue) == 0);

// The block from which a thread takes.
class CurrentBlock {
 public:
  CurrentBlock() = default;
  ~CurrentBlock() { Replace(nullptr); }
  CurrentBlock(const CurrentBlock&) = delete;
  CurrentBlock& operator=(const CurrentBlock&) = delete;

  void* Take(size_t size) {
    void* room = m_block ? m_block->Take(size) : nullptr;
    if (!room) {
      Replace(Block::Make());
      room = m_block->Take(size);
    }
    return room;
  }

 private:
  void Replace(Block* block) {
    if (m_block) m_block->Release();
    m_block = block;
  }

  Block* m_block = nullptr;
};

thread_local CurrentBlock current;

// Values of a list that lies in a block. What a longer one leaves there as it grows is less than it
// is long itself.
constexpr size_t kShortList = 8;

}  // namespace

void* CJsonValue::operator new(size_t size) {
  return size == sizeof(CJsonValue) ? current.Take(size) : ::operator new(size);
}

void CJsonValue::operator delete(void* value, size_t size) {
  if (size == sizeof(CJsonValue)) {
    Block::Around(value)->Release();
  } else {
    ::operator delete(value);
  }
}

JsonValues::OwnedValue* JsonValues::Allocator::allocate(size_t count) {
  const size_t size = count * sizeof(OwnedValue);
  return static_cast<OwnedValue*>(count <= kShortList ? current.Take(size) : ::operator new(size));
}

void JsonValues::Allocator::deallocate(OwnedValue* values, size_t count) {
  if (count <= kShortList) {
    Block::Around(values)->Release();
  } else {
    ::operator delete(values);
  }
}
