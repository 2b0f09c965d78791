#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/point.h"

/// Finds points by the 64-bit ids that a file gives them. Where an id stands in the table depends
/// on a key that is drawn anew in every run, so that no file can be made of ids that all fall
/// together.
class NodeIndex {
 public:
  /// Lets `id` stand for `node`, which must outlive the index, from now on.
  void Set(uint64_t id, const CGpsPoint& node);
  /// The point last set for `id`, or null.
  const CGpsPoint* Find(uint64_t id) const;
  /// `Find` for many ids at once, whose points go to `nodes`: in a large file most of them lie in
  /// far memory, and the ways there overlap.
  void Find(std::span<const uint64_t> ids, const CGpsPoint** nodes) const;

 private:
  struct Slot {
    uint64_t id = 0;
    const CGpsPoint* node = nullptr;  ///< null for a free slot
  };

  /// Where the search for `id` starts. The table must have slots.
  size_t HomeOf(uint64_t id) const;
  /// The slot of `id`, or the free one where it belongs. The table must have a free slot.
  size_t PlaceOf(uint64_t id) const;
  void Grow();

  std::vector<Slot> m_slots;  ///< a power of two of them; a third or more are free
  size_t m_count = 0;
};
