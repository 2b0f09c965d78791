#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

/// Hash of a name under a key that is drawn anew in every run, so that no file can be made of names
/// that all fall together (SipHash-1-3).
uint64_t HashName(std::string_view name);

/// Finds the first of many numbered things that has a given name. Asks `nameAt(number)`, a callable
/// that gives a std::string_view, for the names, and so takes little memory of its own.
template <typename NameAt>
class NameIndex {
 public:
  static constexpr uint32_t kNone = 0xFFFFFFFF;
  static constexpr size_t kMostAtOnce = 64;

  explicit NameIndex(NameAt nameAt) : m_nameAt(std::move(nameAt)) {}

  /// Makes room for `count` names at once.
  void Reserve(size_t count) {
    constexpr size_t kFewest = 16;
    const size_t needed = std::bit_ceil(std::max(2 * count, kFewest));
    if (needed <= m_slots.size()) return;
    std::vector<Slot> former(needed);
    former.swap(m_slots);
    for (const Slot& slot : former) {
      if (slot.number == kNone) continue;
      size_t place = slot.hash & (needed - 1);
      while (m_slots[place].number != kNone) place = (place + 1) & (needed - 1);
      m_slots[place] = slot;
    }
  }

  /// Takes in the thing with this number. No effect when an earlier one has the same name.
  void Add(uint32_t number) {
    Reserve(m_count + 1);
    const std::string_view name = m_nameAt(number);
    const uint32_t hash = ShortHash(name);
    Slot& slot = m_slots[PlaceOf(name, hash)];
    if (slot.number != kNone) return;
    slot = {hash, number};
    ++m_count;
  }

  /// The number of the first thing with this name; kNone when there is none.
  uint32_t Find(std::string_view name) const {
    return m_slots.empty() ? kNone : m_slots[PlaceOf(name, ShortHash(name))].number;
  }

  /// `Find` for up to kMostAtOnce names, whose answers go to `numbers`. Among many things this is
  /// several times as fast: in short loops the ways into far memory overlap.
  void Find(std::span<const std::string_view> names, uint32_t* numbers) const {
    std::array<uint32_t, kMostAtOnce> hashes;
    std::array<std::string_view, kMostAtOnce> found;
    if (m_slots.empty()) {
      std::fill_n(numbers, names.size(), kNone);
      return;
    }
    const size_t mask = m_slots.size() - 1;
    for (size_t i = 0; i < names.size(); ++i) hashes[i] = ShortHash(names[i]);
    for (size_t i = 0; i < names.size(); ++i) numbers[i] = m_slots[hashes[i] & mask].number;
    for (size_t i = 0; i < names.size(); ++i) {
      if (numbers[i] != kNone) found[i] = m_nameAt(numbers[i]);
    }
    for (size_t i = 0; i < names.size(); ++i) {
      if (numbers[i] != kNone && found[i] != names[i])
        numbers[i] = m_slots[PlaceOf(names[i], hashes[i])].number;
    }
  }

 private:
  struct Slot {
    uint32_t hash = 0;
    uint32_t number = kNone;
  };

  static uint32_t ShortHash(std::string_view name) { return static_cast<uint32_t>(HashName(name)); }

  // Where the name stands, or the free slot that it would get. At least half of the slots are free.
  size_t PlaceOf(std::string_view name, uint32_t hash) const {
    const size_t mask = m_slots.size() - 1;
    size_t place = hash & mask;
    while (m_slots[place].number != kNone &&
           (m_slots[place].hash != hash || m_nameAt(m_slots[place].number) != name))
      place = (place + 1) & mask;
    return place;
  }

  NameAt m_nameAt;
  std::vector<Slot> m_slots;
  size_t m_count = 0;
};
