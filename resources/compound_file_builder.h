#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Builds small compound files from nothing: streams of less than 4096 bytes, all of them in the
/// mini stream, and one sector of allocation table. Throws std::length_error beyond that.
class CompoundFileBuilder {
 public:
  static constexpr size_t kRoot = 0;

  /// Sectors of 2^`sectorShift` bytes: 9 in files of version 3, 12 in those of version 4.
  explicit CompoundFileBuilder(uint32_t sectorShift = 9) : m_sectorShift(sectorShift) {
    AddEntry(kTypeRoot, "Root Entry", {}, kRoot);
  }

  /// Adds a stream. `name` is ASCII, up to 31 characters.
  void AddStream(const std::string& name, std::string content, size_t storage = kRoot) {
    if (content.size() >= kMiniStreamLimit) throw std::length_error("stream too long");
    AddEntry(kTypeStream, name, std::move(content), storage);
    m_entries[storage].children.push_back(m_entries.size() - 1);
  }

  /// Adds a storage and gives its number, for the streams inside it.
  size_t AddStorage(const std::string& name, size_t storage = kRoot) {
    AddEntry(kTypeStorage, name, {}, storage);
    m_entries[storage].children.push_back(m_entries.size() - 1);
    return m_entries.size() - 1;
  }

  std::string Build() {
    std::string miniStream;
    std::string miniTable;
    for (Entry& entry : m_entries) PlaceInMiniStream(entry, miniStream, miniTable);
    for (Entry& entry : m_entries) entry.child = LinkTree(SortedChildren(entry));
    // The sectors: table, directory, mini table, mini stream.
    const uint32_t directory = 1;
    const uint32_t miniFat = directory + SectorCount(m_entries.size() * kEntrySize);
    const uint32_t miniData = miniFat + SectorCount(miniTable.size());
    m_entries[kRoot].start = miniStream.empty() ? kEndOfChain : miniData;
    m_entries[kRoot].size = static_cast<uint32_t>(miniStream.size());

    std::string table;
    Append(table, kFatSector, 4);
    AppendChain(table, directory, miniFat);
    AppendChain(table, miniFat, miniData);
    AppendChain(table, miniData, miniData + SectorCount(miniStream.size()));
    if (table.size() > SectorSize()) throw std::length_error("file too long");
    std::string entries;
    for (const Entry& entry : m_entries) AppendEntry(entries, entry);
    while (entries.size() % SectorSize() != 0) AppendEntry(entries, Entry());

    std::string file = Header(directory, miniTable.empty() ? kEndOfChain : miniFat,
                              SectorCount(miniTable.size()), SectorCount(entries.size()));
    file += Padded(table, '\xFF') + entries + Padded(miniTable, '\xFF') + Padded(miniStream, '\0');
    return file;
  }

 private:
  static constexpr uint32_t kFatSector = 0xFFFFFFFD;
  static constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
  static constexpr uint32_t kNone = 0xFFFFFFFF;
  static constexpr size_t kHeaderTableEntries = 109;
  static constexpr size_t kEntrySize = 128;
  static constexpr size_t kNameSize = 64;
  static constexpr size_t kMiniSectorSize = 64;
  static constexpr size_t kMiniStreamLimit = 4096;
  static constexpr uint8_t kTypeUnused = 0;
  static constexpr uint8_t kTypeStorage = 1;
  static constexpr uint8_t kTypeStream = 2;
  static constexpr uint8_t kTypeRoot = 5;
  static constexpr uint8_t kBlack = 1;  // a tree of black nodes only is allowed

  struct Entry {
    uint8_t type = kTypeUnused;
    std::string name;
    std::string content;
    std::vector<size_t> children;
    uint32_t left = kNone;
    uint32_t right = kNone;
    uint32_t child = kNone;
    uint32_t start = 0;
    uint32_t size = 0;
  };

  void AddEntry(uint8_t type, const std::string& name, std::string content, size_t storage) {
    if (2 * (name.size() + 1) > kNameSize) throw std::length_error("name too long");
    Entry entry;
    entry.type = type;
    entry.name = name;
    entry.content = std::move(content);
    m_entries.push_back(std::move(entry));
    if (storage >= m_entries.size()) throw std::out_of_range("no such storage");
  }

  size_t SectorSize() const { return size_t{1} << m_sectorShift; }
  uint32_t SectorCount(size_t size) const {
    return static_cast<uint32_t>((size + SectorSize() - 1) >> m_sectorShift);
  }
  std::string Padded(std::string bytes, char filler) const {
    bytes.resize(size_t{SectorCount(bytes.size())} << m_sectorShift, filler);
    return bytes;
  }

  static void Append(std::string& bytes, uint64_t value, int width) {
    for (int i = 0; i < width; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
  }

  // Table entries of the sectors from `first` to before `end`.
  static void AppendChain(std::string& table, uint32_t first, uint32_t end) {
    for (uint32_t sector = first; sector < end; ++sector)
      Append(table, sector + 1 == end ? kEndOfChain : sector + 1, 4);
  }

  static void PlaceInMiniStream(Entry& entry, std::string& miniStream, std::string& miniTable) {
    if (entry.type != kTypeStream) return;
    entry.size = static_cast<uint32_t>(entry.content.size());
    entry.start = kEndOfChain;
    if (entry.content.empty()) return;
    entry.start = static_cast<uint32_t>(miniStream.size() / kMiniSectorSize);
    miniStream += entry.content;
    miniStream.resize((miniStream.size() + kMiniSectorSize - 1) / kMiniSectorSize *
                      kMiniSectorSize);
    AppendChain(miniTable, entry.start, static_cast<uint32_t>(miniStream.size() / kMiniSectorSize));
  }

  // The order of names in a storage: by length, then by upper-case characters.
  std::vector<size_t> SortedChildren(const Entry& entry) const {
    const auto key = [this](size_t index) {
      std::string upper = m_entries[index].name;
      for (char& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
      return std::pair(upper.size(), upper);
    };
    std::vector<size_t> sorted = entry.children;
    std::sort(sorted.begin(), sorted.end(),
              [&key](size_t first, size_t second) { return key(first) < key(second); });
    return sorted;
  }

  // Links entries in order to a balanced tree and gives its top.
  uint32_t LinkTree(const std::vector<size_t>& sorted) {
    if (sorted.empty()) return kNone;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    m_entries[*middle].left = LinkTree({sorted.begin(), middle});
    m_entries[*middle].right = LinkTree({middle + 1, sorted.end()});
    return static_cast<uint32_t>(*middle);
  }

  static void AppendEntry(std::string& bytes, const Entry& entry) {
    const size_t end = bytes.size() + kNameSize;
    for (const char c : entry.name) Append(bytes, static_cast<uint8_t>(c), 2);
    bytes.resize(end);
    Append(bytes, entry.name.empty() ? 0 : 2 * (entry.name.size() + 1), 2);
    Append(bytes, entry.type, 1);
    Append(bytes, kBlack, 1);
    Append(bytes, entry.left, 4);
    Append(bytes, entry.right, 4);
    Append(bytes, entry.child, 4);
    bytes.resize(end + 52);  // class id, state bits and times are unset
    Append(bytes, entry.start, 4);
    Append(bytes, entry.size, 8);
  }

  std::string Header(uint32_t directory, uint32_t miniFat, uint32_t miniFatCount,
                     uint32_t directoryCount) const {
    const bool isVersion3 = m_sectorShift == 9;
    std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    header.resize(24);
    Append(header, 0x3E, 2);  // minor version
    Append(header, isVersion3 ? 3 : 4, 2);
    Append(header, 0xFFFE, 2);  // little-endian
    Append(header, m_sectorShift, 2);
    Append(header, 6, 2);  // mini sectors of 64 bytes
    header.resize(40);
    Append(header, isVersion3 ? 0 : directoryCount, 4);
    Append(header, 1, 4);  // sectors of the allocation table
    Append(header, directory, 4);
    Append(header, 0, 4);
    Append(header, kMiniStreamLimit, 4);
    Append(header, miniFat, 4);
    Append(header, miniFatCount, 4);
    Append(header, kEndOfChain, 4);
    Append(header, 0, 4);
    Append(header, 0, 4);  // the allocation table is the first sector
    for (size_t i = 1; i < kHeaderTableEntries; ++i) Append(header, kNone, 4);
    return Padded(header, '\0');
  }

  uint32_t m_sectorShift;
  std::vector<Entry> m_entries;
};
