#include "io/compound_file_check.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr std::string_view kSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

// Header fields.
constexpr size_t kHeaderSize = 512;
constexpr size_t kSectorShiftOffset = 30;
constexpr size_t kMiniSectorShiftOffset = 32;
constexpr size_t kFatCountOffset = 44;
constexpr size_t kDirectoryOffset = 48;
constexpr size_t kMiniStreamLimitOffset = 56;
constexpr size_t kMiniFatOffset = 60;
constexpr size_t kMiniFatCountOffset = 64;
constexpr size_t kDifatOffset = 68;
constexpr size_t kDifatCountOffset = 72;
constexpr size_t kHeaderDifatOffset = 76;
constexpr size_t kHeaderDifatCount = 109;

constexpr uint32_t kSectorShiftVersion3 = 9;
constexpr uint32_t kSectorShiftVersion4 = 12;
constexpr uint32_t kMiniSectorShift = 6;
constexpr size_t kMiniSectorSize = size_t{1} << kMiniSectorShift;
constexpr uint32_t kMiniStreamLimit = 4096;  // smaller streams live in the mini stream
constexpr uint32_t kEndOfChain = 0xFFFFFFFE;

// Directory entries.
constexpr size_t kEntrySize = 128;
constexpr size_t kNameLengthOffset = 64;
constexpr size_t kTypeOffset = 66;
constexpr size_t kLeftOffset = 68;
constexpr size_t kRightOffset = 72;
constexpr size_t kChildOffset = 76;
constexpr size_t kStartOffset = 116;
constexpr size_t kSizeOffset = 120;
constexpr uint8_t kTypeStorage = 1;
constexpr uint8_t kTypeStream = 2;
constexpr uint8_t kTypeRoot = 5;
constexpr uint32_t kRootEntry = 0;
constexpr uint32_t kNoEntry = 0xFFFFFFFF;

// Libraries sort the entries in quadratic time and walk their tree by recursion. A route file has
// a few dozen.
constexpr size_t kMostEntries = 4096;

// The limit of the format.
constexpr size_t kLargestFile = 0x7FFFFFFF;

// Which sector follows which. Every sector belongs to one chain at most.
class AllocationTable {
 public:
  void Append(uint32_t next) { m_next.push_back(next); }
  // Cuts the table, or fills it up, to the number of sectors that are there.
  void SetSectorCount(size_t count) {
    m_next.resize(count, kEndOfChain);
    m_taken.resize(count);
  }

  // False for a sector that is not there or belongs to something else already.
  bool Take(uint32_t sector) {
    if (sector >= m_taken.size() || m_taken[sector]) return false;
    m_taken[sector] = true;
    return true;
  }

  // The sectors of a chain from its first on, all of them taken; none for a chain that leaves the
  // file or meets itself or another.
  std::optional<std::vector<uint32_t>> TakeChain(uint32_t first) {
    std::vector<uint32_t> chain;
    for (uint32_t sector = first; sector != kEndOfChain; sector = m_next[sector]) {
      if (!Take(sector)) return std::nullopt;
      chain.push_back(sector);
    }
    return chain;
  }

 private:
  std::vector<uint32_t> m_next;
  std::vector<bool> m_taken;
};

class SoundnessCheck {
 public:
  explicit SoundnessCheck(std::string_view file) : m_file(file) {}

  bool Run() { return CheckHeader() && CheckFat() && CheckDirectory(); }

 private:
  uint32_t Integer(size_t offset, size_t width) const {
    uint32_t value = 0;
    if (offset > m_file.size() || m_file.size() - offset < width) return 0;
    for (size_t i = 0; i < width; ++i)
      value |= uint32_t{static_cast<uint8_t>(m_file[offset + i])} << (8 * i);
    return value;
  }
  uint32_t Word(size_t offset) const { return Integer(offset, 4); }
  size_t SectorSize() const { return size_t{1} << m_sectorShift; }
  size_t WordsPerSector() const { return SectorSize() / 4; }
  // The header takes the place of one sector.
  size_t SectorOffset(uint32_t sector) const { return (size_t{sector} + 1) << m_sectorShift; }

  bool CheckHeader() {
    if (m_file.size() < kHeaderSize || m_file.size() > kLargestFile) return false;
    m_sectorShift = Integer(kSectorShiftOffset, 2);
    if (m_sectorShift != kSectorShiftVersion3 && m_sectorShift != kSectorShiftVersion4)
      return false;
    if (m_file.size() <= SectorSize()) return false;
    m_sectorCount = (m_file.size() - 1) >> m_sectorShift;  // the last one may be cut
    return Integer(kMiniSectorShiftOffset, 2) == kMiniSectorShift &&
           Word(kMiniStreamLimitOffset) == kMiniStreamLimit &&
           Word(kMiniFatCountOffset) <= m_sectorCount;
  }

  // The sectors of the table itself are listed in the header, and for large files in sectors of
  // their own that are chained by their last word.
  bool CheckFat() {
    const size_t fatCount = Word(kFatCountOffset);
    if (fatCount == 0 || fatCount > m_sectorCount) return false;
    std::vector<uint32_t> fatSectors;
    for (size_t i = 0; i < kHeaderDifatCount && fatSectors.size() < fatCount; ++i)
      fatSectors.push_back(Word(kHeaderDifatOffset + 4 * i));
    std::vector<uint32_t> difatSectors;
    for (uint32_t sector = Word(kDifatOffset); fatSectors.size() < fatCount;) {
      if (sector >= m_sectorCount || difatSectors.size() >= m_sectorCount) return false;
      difatSectors.push_back(sector);
      const size_t offset = SectorOffset(sector);
      for (size_t i = 0; i + 1 < WordsPerSector() && fatSectors.size() < fatCount; ++i)
        fatSectors.push_back(Word(offset + 4 * i));
      sector = Word(offset + 4 * (WordsPerSector() - 1));
    }
    if (Word(kDifatCountOffset) != difatSectors.size()) return false;

    for (const uint32_t sector : fatSectors) {
      if (sector >= m_sectorCount) return false;
      AppendTable(m_sectors, sector);
    }
    m_sectors.SetSectorCount(m_sectorCount);
    for (const uint32_t sector : fatSectors)
      if (!m_sectors.Take(sector)) return false;
    for (const uint32_t sector : difatSectors)
      if (!m_sectors.Take(sector)) return false;
    return SectorsAreWhole(fatSectors) && SectorsAreWhole(difatSectors);
  }

  // True when the units of a chain, which are `unitSize` bytes long and begin at `base`, hold
  // `size` bytes in front of `limit`: the last sector of a file may be cut.
  static bool Holds(const std::vector<uint32_t>& chain, size_t size, size_t unitSize, size_t base,
                    size_t limit) {
    size_t missing = size;
    for (const uint32_t unit : chain) {
      const size_t used = std::min(missing, unitSize);
      if (base + unit * unitSize + used > limit) return false;
      missing -= used;
    }
    return missing == 0;
  }
  bool SectorsHold(const std::vector<uint32_t>& chain, size_t size) const {
    return Holds(chain, size, SectorSize(), SectorSize(), m_file.size());
  }
  bool SectorsAreWhole(const std::vector<uint32_t>& chain) const {
    return SectorsHold(chain, chain.size() << m_sectorShift);
  }

  void AppendTable(AllocationTable& table, uint32_t sector) const {
    for (size_t i = 0; i < WordsPerSector(); ++i) table.Append(Word(SectorOffset(sector) + 4 * i));
  }

  // The mini stream is the root's own; its table is a chain that begins in the header.
  bool CheckMiniStream() {
    const size_t root = EntryOffset(kRootEntry);
    m_miniStreamSize = Word(root + kSizeOffset);
    if (m_miniStreamSize == 0) return true;
    const auto stream = m_sectors.TakeChain(Word(root + kStartOffset));
    if (!stream || !SectorsHold(*stream, m_miniStreamSize)) return false;
    const auto table = m_sectors.TakeChain(Word(kMiniFatOffset));
    if (!table || !SectorsAreWhole(*table)) return false;
    for (const uint32_t sector : *table) AppendTable(m_miniSectors, sector);
    m_miniSectors.SetSectorCount((m_miniStreamSize + kMiniSectorSize - 1) / kMiniSectorSize);
    return true;
  }

  size_t EntryOffset(uint32_t entry) const {
    const size_t position = entry * kEntrySize;
    return SectorOffset(m_directory[position >> m_sectorShift]) + position % SectorSize();
  }

  bool CheckDirectory() {
    auto directory = m_sectors.TakeChain(Word(kDirectoryOffset));
    if (!directory || directory->empty() || !SectorsAreWhole(*directory)) return false;
    m_directory = std::move(*directory);
    if (Integer(EntryOffset(kRootEntry) + kTypeOffset, 1) != kTypeRoot || !CheckMiniStream())
      return false;

    const size_t entryCount = (m_directory.size() << m_sectorShift) / kEntrySize;
    std::vector<bool> seen(entryCount);
    size_t seenCount = 0;
    std::vector<uint32_t> pending{kRootEntry};
    while (!pending.empty()) {
      const uint32_t entry = pending.back();
      pending.pop_back();
      if (entry == kNoEntry) continue;
      if (entry >= entryCount || seen[entry] || ++seenCount > kMostEntries) return false;
      seen[entry] = true;
      const size_t offset = EntryOffset(entry);
      if (entry != kRootEntry && !CheckEntry(offset)) return false;
      for (const size_t link : {kLeftOffset, kRightOffset, kChildOffset})
        pending.push_back(Word(offset + link));
    }
    return true;
  }

  bool CheckEntry(size_t offset) {
    const uint32_t nameLength = Integer(offset + kNameLengthOffset, 2);
    if (nameLength < 2 || nameLength > kNameLengthOffset || nameLength % 2 != 0) return false;
    const uint32_t type = Integer(offset + kTypeOffset, 1);
    if (type == kTypeStorage) return true;
    return type == kTypeStream &&
           CheckStream(Word(offset + kStartOffset), Word(offset + kSizeOffset));
  }

  bool CheckStream(uint32_t first, size_t size) {
    if (size == 0) return true;
    if (size >= kMiniStreamLimit) {
      const auto chain = m_sectors.TakeChain(first);
      return chain && SectorsHold(*chain, size);
    }
    const auto chain = m_miniSectors.TakeChain(first);
    return chain && Holds(*chain, size, kMiniSectorSize, 0, m_miniStreamSize);
  }

  std::string_view m_file;
  uint32_t m_sectorShift = 0;
  size_t m_sectorCount = 0;
  AllocationTable m_sectors;
  size_t m_miniStreamSize = 0;
  AllocationTable m_miniSectors;
  std::vector<uint32_t> m_directory;  // its sectors
};

}  // namespace

bool HasCompoundFileSignature(std::string_view bytes) { return bytes.starts_with(kSignature); }

bool IsSoundCompoundFile(std::string_view bytes) {
  return HasCompoundFileSignature(bytes) && SoundnessCheck(bytes).Run();
}
