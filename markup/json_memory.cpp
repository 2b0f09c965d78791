#include <atomic>
#include <cstdint>
#include <new>

#include "markup/json.h"

// The values of a large document take longer to get from the heap and to give back one by one than
// to read. So they are cut from blocks, one behind the other, and a block goes back as a whole with
// the last of its values, whichever thread drops that one.

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

  // Room for one more value; null when the block is full.
  void* Take() {
    if (kBlockSize - m_end < sizeof(CJsonValue)) return nullptr;
    void* const room = reinterpret_cast<char*>(this) + m_end;
    m_end += sizeof(CJsonValue);
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

  std::atomic<size_t> m_users{1};  // the values that are left, and the thread that takes from it
  size_t m_end = sizeof(Block);    // where the next value goes
};

static_assert(sizeof(Block) % alignof(CJsonValue) == 0);

// The block from which a thread takes.
class CurrentBlock {
 public:
  CurrentBlock() = default;
  ~CurrentBlock() { Replace(nullptr); }
  CurrentBlock(const CurrentBlock&) = delete;
  CurrentBlock& operator=(const CurrentBlock&) = delete;

  void* Take() {
    void* room = m_block ? m_block->Take() : nullptr;
    if (!room) {
      Replace(Block::Make());
      room = m_block->Take();
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

}  // namespace

void* CJsonValue::operator new(size_t size) {
  return size == sizeof(CJsonValue) ? current.Take() : ::operator new(size);
}

void CJsonValue::operator delete(void* value, size_t size) {
  if (size == sizeof(CJsonValue)) {
    Block::Around(value)->Release();
  } else {
    ::operator delete(value);
  }
}
