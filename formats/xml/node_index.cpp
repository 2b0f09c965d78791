#include "formats/xml/node_index.h"

#include <random>

#include "platform/prefetch.h"

namespace {

struct Key {
  uint64_t offset;
  uint64_t first;  // the factors are odd, so that no two ids become the same number
  uint64_t second;
};

const Key& RunKey() {
  static const Key key = [] {
    std::random_device device;
    const auto draw = [&device] { return uint64_t{device()} << 32 | device(); };
    return Key{draw(), draw() | 1, draw() | 1};
  }();
  return key;
}

// The upper half of the result depends on every bit of the id.
uint64_t Mix(uint64_t id) {
  const Key& key = RunKey();
  uint64_t mixed = (id ^ key.offset) * key.first;
  mixed ^= mixed >> 32;
  return mixed * key.second;
}

}  // namespace

void NodeIndex::Set(uint64_t id, const CGpsPoint& node) {
  if (3 * (m_count + 1) > 2 * m_slots.size()) Grow();
  Slot& slot = m_slots[PlaceOf(id)];
  if (!slot.node) ++m_count;
  slot = {id, &node};
}

const CGpsPoint* NodeIndex::Find(uint64_t id) const {
  return m_slots.empty() ? nullptr : m_slots[PlaceOf(id)].node;
}

void NodeIndex::Find(std::span<const uint64_t> ids, const CGpsPoint** nodes) const {
  if (!m_slots.empty()) {
    for (const uint64_t id : ids) Prefetch(&m_slots[HomeOf(id)]);
  }
  for (size_t i = 0; i < ids.size(); ++i) {
    nodes[i] = Find(ids[i]);
    if (nodes[i]) Prefetch(nodes[i]);
  }
}

// The nodes of a way mostly have ids in a row: eight of these stand in a row here too, so that few
// cache lines are touched.
size_t NodeIndex::HomeOf(uint64_t id) const {
  const uint64_t home = (Mix(id >> 3) >> 32 << 3) + (id & 7);
  return static_cast<size_t>(home) & (m_slots.size() - 1);
}

size_t NodeIndex::PlaceOf(uint64_t id) const {
  const size_t mask = m_slots.size() - 1;
  size_t place = HomeOf(id);
  while (m_slots[place].node && m_slots[place].id != id) place = (place + 1) & mask;
  return place;
}

void NodeIndex::Grow() {
  constexpr size_t kFewest = 16;
  std::vector<Slot> former(m_slots.empty() ? kFewest : 2 * m_slots.size());
  former.swap(m_slots);
  for (const Slot& slot : former) {
    if (slot.node) m_slots[PlaceOf(slot.id)] = slot;
  }
}
