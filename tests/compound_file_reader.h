#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A reader of compound files that believes nothing, to check what the program writes. Throws
/// std::runtime_error for everything that the format forbids.
class CompoundFileReader {
 public:
  explicit CompoundFileReader(std::string_view bytes) : m_bytes(bytes) {
    Require(bytes.size() >= 512 && bytes.substr(0, 8) == "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1",
            "signature");
    const uint64_t version = Number(26, 2);
    Require(version == 3 || version == 4, "version");
    Require(Number(28, 2) == 0xFFFE, "byte order");
    Require(Number(30, 2) == (version == 3 ? 9 : 12), "sector size");
    Require(Number(32, 2) == 6 && Number(56, 4) == 4096, "mini sectors");
    m_sectorSize = size_t{1} << Number(30, 2);
    Require(bytes.size() % m_sectorSize == 0, "size of the file");
    m_sectorCount = bytes.size() / m_sectorSize - 1;
    ReadTable();
    m_directory = Chain(Number(48, 4));
    Require(version == 3 || Number(40, 4) == m_directory.size() / m_sectorSize,
            "directory sectors");
    const std::string miniTable = Chain(Number(60, 4));
    Require(Number(64, 4) * m_sectorSize == miniTable.size(), "mini table");
    for (size_t i = 0; i < miniTable.size(); i += 4) m_miniNext.push_back(Number(miniTable, i, 4));
    Require(Entry(0, 66, 1) == 5, "root entry");
    m_miniStream = Chain(Entry(0, 116, 4));
    Require(m_miniStream.size() >= Entry(0, 120, 4), "size of the mini stream");
    m_miniStream.resize(Entry(0, 120, 4));
    ReadStorage(0, "");
    for (size_t sector = 0; sector < m_sectorCount; ++sector)
      Require(m_taken.count(sector) == 1 || m_next[sector] == kFree, "lost sector");
  }

  /// All streams; those inside a storage have its name and a slash in front.
  const std::map<std::string, std::string>& Streams() const { return m_streams; }
  /// Class ids of all storages, of the root under the empty name.
  const std::map<std::string, std::string>& ClassIds() const { return m_classIds; }
  /// Where the entry of a stream or storage stands in the file.
  size_t EntryOffset(const std::string& name) const { return m_entryOffsets.at(name); }
  /// Where the table entry of a sector stands in the file.
  size_t TableOffset(size_t sector) const { return m_tableOffsets.at(sector); }

 private:
  static constexpr uint64_t kFree = 0xFFFFFFFF;
  static constexpr uint64_t kEndOfChain = 0xFFFFFFFE;
  static constexpr uint64_t kTableSector = 0xFFFFFFFD;
  static constexpr uint64_t kTableListSector = 0xFFFFFFFC;
  static constexpr uint64_t kNoEntry = 0xFFFFFFFF;

  static void Require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
  }
  static uint64_t Number(std::string_view bytes, size_t offset, size_t width) {
    Require(offset + width <= bytes.size(), "number outside");
    uint64_t value = 0;
    for (size_t i = width; i-- > 0;) value = value << 8 | static_cast<uint8_t>(bytes[offset + i]);
    return value;
  }
  uint64_t Number(size_t offset, size_t width) const { return Number(m_bytes, offset, width); }

  std::string_view Sector(uint64_t sector) {
    Require(sector < m_sectorCount, "sector outside");
    Require(m_taken.insert(sector).second, "sector used twice");
    return m_bytes.substr((sector + 1) * m_sectorSize, m_sectorSize);
  }

  void ReadTable() {
    std::vector<uint64_t> tableSectors;
    for (size_t i = 0; i < 109; ++i) tableSectors.push_back(Number(76 + 4 * i, 4));
    std::vector<uint64_t> listSectors;
    for (uint64_t list = Number(68, 4); list != kEndOfChain;) {
      listSectors.push_back(list);
      const std::string_view sector = Sector(list);
      for (size_t i = 0; i + 4 < m_sectorSize; i += 4) tableSectors.push_back(Number(sector, i, 4));
      list = Number(sector, m_sectorSize - 4, 4);
    }
    Require(Number(72, 4) == listSectors.size(), "count of table list sectors");
    while (!tableSectors.empty() && tableSectors.back() == kFree) tableSectors.pop_back();
    Require(Number(44, 4) == tableSectors.size(), "count of table sectors");
    for (const uint64_t number : tableSectors) {
      const std::string_view sector = Sector(number);
      for (size_t i = 0; i < m_sectorSize; i += 4) {
        m_next.push_back(Number(sector, i, 4));
        m_tableOffsets.push_back((number + 1) * m_sectorSize + i);
      }
    }
    Require(m_next.size() >= m_sectorCount, "table too short");
    for (const uint64_t number : tableSectors)
      Require(m_next[number] == kTableSector, "mark of a table sector");
    for (const uint64_t number : listSectors)
      Require(m_next[number] == kTableListSector, "mark of a table list sector");
  }

  std::string Chain(uint64_t sector) {
    std::string content;
    for (; sector != kEndOfChain; sector = m_next[sector]) content += Sector(sector);
    return content;
  }

  std::string MiniChain(uint64_t sector) {
    std::string content;
    for (; sector != kEndOfChain; sector = m_miniNext[sector]) {
      Require(sector < m_miniNext.size() && sector * 64 < m_miniStream.size(),
              "mini sector outside");
      Require(m_miniTaken.insert(sector).second, "mini sector used twice");
      content += m_miniStream.substr(sector * 64, 64);
    }
    return content;
  }

  uint64_t Entry(uint64_t entry, size_t field, size_t width) const {
    return Number(m_directory, entry * 128 + field, width);
  }

  std::string EntryName(uint64_t entry) const {
    const size_t size = Entry(entry, 64, 2);
    Require(size >= 4 && size <= 64 && size % 2 == 0, "length of a name");
    std::string name;
    for (size_t i = 0; i + 2 < size; i += 2) name += static_cast<char>(Entry(entry, i, 2));
    Require(Entry(entry, size - 2, 2) == 0, "end of a name");
    return name;
  }

  static std::pair<size_t, std::string> SortKey(std::string name) {
    for (char& c : name)
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return {name.size(), name};
  }

  // The elements of a tree, which must come in rising order.
  void ReadTree(uint64_t entry, std::vector<uint64_t>& elements) {
    if (entry == kNoEntry) return;
    Require(m_entries.insert(entry).second, "entry met twice");
    ReadTree(Entry(entry, 68, 4), elements);
    Require(elements.empty() || SortKey(EntryName(elements.back())) < SortKey(EntryName(entry)),
            "order of names");
    elements.push_back(entry);
    ReadTree(Entry(entry, 72, 4), elements);
  }

  void ReadStorage(uint64_t storage, const std::string& path) {
    m_classIds[path] = m_directory.substr(storage * 128 + 80, 16);
    std::vector<uint64_t> elements;
    ReadTree(Entry(storage, 76, 4), elements);
    for (const uint64_t element : elements) {
      const std::string name = (path.empty() ? "" : path + "/") + EntryName(element);
      m_entryOffsets[name] = m_bytes.find(m_directory.substr(element * 128, 128));
      const uint64_t type = Entry(element, 66, 1);
      Require(type == 1 || type == 2, "type of an entry");
      if (type == 1) {
        ReadStorage(element, name);
        continue;
      }
      Require(Entry(element, 76, 4) == kNoEntry, "stream with elements");
      const uint64_t size = Entry(element, 120, 8);
      const uint64_t start = Entry(element, 116, 4);
      std::string content;
      if (size > 0) content = size < 4096 ? MiniChain(start) : Chain(start);
      const size_t unit = size < 4096 ? 64 : m_sectorSize;
      Require(content.size() == (size + unit - 1) / unit * unit, "length of a chain");
      content.resize(size);
      m_streams[name] = content;
    }
  }

  std::string_view m_bytes;
  size_t m_sectorSize = 0;
  size_t m_sectorCount = 0;
  std::vector<uint64_t> m_next;
  std::vector<size_t> m_tableOffsets;
  std::set<uint64_t> m_taken;
  std::string m_directory;
  std::vector<uint64_t> m_miniNext;
  std::string m_miniStream;
  std::set<uint64_t> m_miniTaken;
  std::set<uint64_t> m_entries;
  std::map<std::string, std::string> m_streams;
  std::map<std::string, std::string> m_classIds;
  std::map<std::string, size_t> m_entryOffsets;
};
