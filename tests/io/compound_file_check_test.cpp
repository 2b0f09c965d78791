#include "io/compound_file_check.h"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "io/compound_file.h"
#include "resources/compound_file_builder.h"
#include "tests/compound_file_reader.h"

namespace {

constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr uint32_t kFree = 0xFFFFFFFF;

std::string SmallFile() {
  CompoundFileBuilder builder;
  builder.AddStream("First", std::string(100, 'f'));
  builder.AddStream("Second", std::string(200, 's'));
  return builder.Build();
}

// A file with a stream of 10 sectors of its own and one in the mini stream.
std::string LargeStreamFile() {
  std::string file;
  EXPECT_EQ(ReplaceStorageStream(SmallFile(), "First", std::string(5000, 'F'), file), 0u);
  return file;
}

void SetWord(std::string& bytes, size_t offset, uint32_t value) {
  for (size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

uint32_t Word(const std::string& bytes, size_t offset) {
  uint32_t value = 0;
  for (size_t i = 4; i-- > 0;) value = value << 8 | static_cast<uint8_t>(bytes[offset + i]);
  return value;
}

bool IsSoundWith(std::string bytes, size_t offset, uint32_t value) {
  SetWord(bytes, offset, value);
  return IsSoundCompoundFile(bytes);
}

TEST(CompoundFileCheck, TakesSoundFiles) {
  EXPECT_TRUE(IsSoundCompoundFile(SmallFile()));
  EXPECT_TRUE(IsSoundCompoundFile(LargeStreamFile()));
  EXPECT_TRUE(IsSoundCompoundFile(CompoundFileBuilder().Build()));
  EXPECT_TRUE(IsSoundCompoundFile(CompoundFileBuilder(12).Build()));
}

TEST(CompoundFileCheck, KnowsTheSignature) {
  EXPECT_TRUE(HasCompoundFileSignature(SmallFile()));
  EXPECT_TRUE(HasCompoundFileSignature("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
  EXPECT_FALSE(HasCompoundFileSignature("\xD0\xCF\x11\xE0\xA1\xB1\x1A"));
  std::string file = SmallFile();
  file[7] = '\xE0';
  EXPECT_FALSE(HasCompoundFileSignature(file));
  EXPECT_FALSE(IsSoundCompoundFile(file));
}

TEST(CompoundFileCheck, RefusesWrongUnits) {
  // Sector size and mini sector size as powers of two, and the limit between them.
  EXPECT_FALSE(IsSoundWith(SmallFile(), 30, 0x0006000A));
  EXPECT_FALSE(IsSoundWith(SmallFile(), 30, 0x0006001E));
  EXPECT_FALSE(IsSoundWith(SmallFile(), 30, 0x00060000));
  EXPECT_FALSE(IsSoundWith(SmallFile(), 30, 0x00070009));
  EXPECT_TRUE(IsSoundWith(SmallFile(), 30, 0x00060009));
  EXPECT_FALSE(IsSoundWith(SmallFile(), 56, 0));
  EXPECT_FALSE(IsSoundWith(SmallFile(), 56, 0x10000));
}

TEST(CompoundFileCheck, RefusesTableCountsBeyondTheFile) {
  for (const uint32_t count : {0u, 2u, 110u, 0x7FFFFFFFu, 0xFFFFFFFFu})
    EXPECT_FALSE(IsSoundWith(SmallFile(), 44, count)) << count;
  for (const uint32_t count : {5u, 0x40000000u, 0xFFFFFFFFu})
    EXPECT_FALSE(IsSoundWith(SmallFile(), 64, count)) << count;
  for (const uint32_t count : {1u, 0xFFFFFFFFu})
    EXPECT_FALSE(IsSoundWith(SmallFile(), 72, count)) << count;
}

TEST(CompoundFileCheck, RefusesSectorsBeyondTheFile) {
  // Table, directory and mini table begin at sectors 0, 1 and 2 of 4.
  for (const size_t field : {76u, 48u, 60u}) {
    EXPECT_FALSE(IsSoundWith(SmallFile(), field, 4)) << field;
    EXPECT_FALSE(IsSoundWith(SmallFile(), field, 0x7FFFFFFF)) << field;
    EXPECT_FALSE(IsSoundWith(SmallFile(), field, kFree)) << field;
  }
}

TEST(CompoundFileCheck, RefusesCirclesAndSharedSectors) {
  const std::string file = LargeStreamFile();
  const CompoundFileReader reader(file);
  const uint32_t start = Word(file, reader.EntryOffset("First") + 116);
  const uint32_t second = Word(file, reader.TableOffset(start));
  ASSERT_EQ(second, start + 1);
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(start), start));
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(second), start));
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(second), kEndOfChain));
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(second), kFree));
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(second), 1000000));
  // The directory runs into itself, and the stream into the directory.
  const uint32_t directory = Word(file, 48);
  EXPECT_FALSE(IsSoundWith(file, reader.TableOffset(directory), directory));
  EXPECT_FALSE(IsSoundWith(file, reader.EntryOffset("First") + 116, directory));
  EXPECT_FALSE(IsSoundWith(file, 60, directory));
}

TEST(CompoundFileCheck, RefusesCirclesInTheMiniStream) {
  const std::string file = SmallFile();
  // The mini table is sector 2: "First" has entries 0 and 1, "Second" 2 to 5.
  const size_t miniTable = 3 * 512;
  ASSERT_EQ(Word(file, miniTable), 1u);
  ASSERT_EQ(Word(file, miniTable + 4), kEndOfChain);
  ASSERT_EQ(Word(file, miniTable + 8), 3u);
  EXPECT_FALSE(IsSoundWith(file, miniTable, 0));
  EXPECT_FALSE(IsSoundWith(file, miniTable + 4, 2));
  EXPECT_FALSE(IsSoundWith(file, miniTable, kEndOfChain));
  EXPECT_FALSE(IsSoundWith(file, miniTable + 12, 6));
  EXPECT_TRUE(IsSoundWith(file, miniTable + 24, 7));
}

TEST(CompoundFileCheck, RefusesSizesBeyondTheChain) {
  const std::string file = LargeStreamFile();
  const CompoundFileReader reader(file);
  const size_t sizeOfFirst = reader.EntryOffset("First") + 120;
  EXPECT_TRUE(IsSoundWith(file, sizeOfFirst, 5120));
  EXPECT_FALSE(IsSoundWith(file, sizeOfFirst, 5121));
  EXPECT_FALSE(IsSoundWith(file, sizeOfFirst, 0xFFFFFFFF));
  const size_t sizeOfSecond = reader.EntryOffset("Second") + 120;
  EXPECT_TRUE(IsSoundWith(file, sizeOfSecond, 0));
  EXPECT_FALSE(IsSoundWith(file, sizeOfSecond, 257));
  // The root's size is that of the mini stream; it is entry 0.
  const std::string small = SmallFile();
  const size_t sizeOfRoot = 2 * 512 + 120;
  ASSERT_EQ(Word(small, sizeOfRoot), 6u * 64);
  EXPECT_FALSE(IsSoundWith(small, sizeOfRoot, 513));
  EXPECT_FALSE(IsSoundWith(small, sizeOfRoot, 5 * 64));
  EXPECT_FALSE(IsSoundWith(small, sizeOfRoot, 0));
}

TEST(CompoundFileCheck, RefusesDirectoriesThatAreNoTree) {
  const std::string file = SmallFile();
  const size_t root = 2 * 512;
  const size_t first = CompoundFileReader(file).EntryOffset("First");
  const size_t second = CompoundFileReader(file).EntryOffset("Second");
  ASSERT_EQ(Word(file, root + 76), 2u);
  ASSERT_EQ(Word(file, second + 68), 1u);
  for (const size_t link : {68u, 72u, 76u}) {
    EXPECT_FALSE(IsSoundWith(file, first + link, 1)) << link;
    EXPECT_FALSE(IsSoundWith(file, first + link, 2)) << link;
    EXPECT_FALSE(IsSoundWith(file, first + link, 0)) << link;
    EXPECT_FALSE(IsSoundWith(file, first + link, 4)) << link;
    EXPECT_FALSE(IsSoundWith(file, first + link, 0xFFFFFFFE)) << link;
  }
  // Entry 3 is unused. The types: a second root, and one that does not exist.
  EXPECT_FALSE(IsSoundWith(file, first + 68, 3));
  EXPECT_FALSE(IsSoundWith(file, first + 64, 0x0105000C));
  EXPECT_FALSE(IsSoundWith(file, first + 64, 0x0103000C));
  EXPECT_TRUE(IsSoundWith(file, first + 64, 0x0102000C));
  EXPECT_FALSE(IsSoundWith(file, root + 64, 0x01020016));
}

TEST(CompoundFileCheck, RefusesNamesOfImpossibleLength) {
  const std::string file = SmallFile();
  const size_t first = CompoundFileReader(file).EntryOffset("First");
  for (const uint32_t length : {0u, 1u, 13u, 66u, 0xFFFFu})
    EXPECT_FALSE(IsSoundWith(file, first + 64, 0x01020000 | length)) << length;
  EXPECT_TRUE(IsSoundWith(file, first + 64, 0x01020000 | 64));
}

TEST(CompoundFileCheck, RefusesMoreEntriesThanAnybodyHas) {
  // 4095 entries are linked to a list, which takes a directory of 1024 sectors; its table of
  // 9 sectors comes first.
  const auto listOf = [](uint32_t count) {
    const std::string head = SmallFile();
    std::string file = head.substr(0, 512);
    constexpr uint32_t kTables = 9;
    constexpr uint32_t kDirectory = 1030;
    SetWord(file, 44, kTables);
    SetWord(file, 48, kTables);
    SetWord(file, 60, kEndOfChain);
    SetWord(file, 64, 0);
    for (uint32_t i = 0; i < kTables; ++i) SetWord(file, 76 + 4 * i, i);
    file.resize(512 + (kTables + kDirectory) * 512);
    for (uint32_t i = 0; i < kTables; ++i) SetWord(file, 512 + 4 * i, 0xFFFFFFFD);
    for (uint32_t i = 0; i < kDirectory; ++i)
      SetWord(file, 512 + 4 * (kTables + i), i + 1 == kDirectory ? kEndOfChain : kTables + i + 1);
    const std::string entry = head.substr(CompoundFileReader(head).EntryOffset("First"), 128);
    for (uint32_t i = 0; i < count; ++i) {
      const size_t offset = 512 + kTables * 512 + size_t{i} * 128;
      file.replace(offset, 128, i == 0 ? head.substr(2 * 512, 128) : entry);
      SetWord(file, offset + 68, kFree);
      SetWord(file, offset + 72, i == 0 || i + 1 == count ? kFree : i + 1);
      SetWord(file, offset + 76, i == 0 ? 1 : kFree);
      SetWord(file, offset + 120, 0);
    }
    return file;
  };
  EXPECT_TRUE(IsSoundCompoundFile(listOf(4096)));
  EXPECT_FALSE(IsSoundCompoundFile(listOf(4097)));
  std::string content;
  EXPECT_EQ(ReadStorageStream(listOf(4096), "Journey", content), 0x80030002u);
}

TEST(CompoundFileCheck, TakesALastSectorThatIsCutBehindItsBytes) {
  // The mini stream of 384 bytes is the last sector.
  const std::string file = SmallFile();
  EXPECT_TRUE(IsSoundCompoundFile(file.substr(0, file.size() - 512 + 384)));
  EXPECT_FALSE(IsSoundCompoundFile(file.substr(0, file.size() - 512 + 383)));
  EXPECT_FALSE(IsSoundCompoundFile(file.substr(0, file.size() - 512)));
}

TEST(CompoundFileCheck, IsLinearInTheSizeOfTheFile) {
  // A table whose every entry leads on: one chain through the whole file.
  const auto check = [](size_t size) {
    std::string file;
    EXPECT_EQ(ReplaceStorageStream(SmallFile(), "First", std::string(size, 'F'), file), 0u);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(IsSoundCompoundFile(file));
    return std::chrono::steady_clock::now() - start;
  };
  EXPECT_LT(check(64u << 20), std::chrono::seconds(5));
}

}  // namespace
