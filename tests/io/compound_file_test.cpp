#include "io/compound_file.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "resources/compound_file_builder.h"
#include "tests/compound_file_reader.h"
#include "tests/temporary_folder.h"

namespace {

using Streams = std::map<std::string, std::string>;

constexpr uint32_t kStreamNotFound = 0x80030002;
constexpr uint32_t kNotAStorage = 0x80030050;
constexpr uint32_t kCorrupt = 0x80030109;
constexpr uint32_t kModuleMissing = 0x8007007E;

// A file with streams of many lengths, two storages and an empty stream.
std::string SampleFile(uint32_t sectorShift = 9) {
  CompoundFileBuilder builder(sectorShift);
  builder.AddStream("Journey", std::string(428, 'j'));
  builder.AddStream("\005Properties", "p");
  builder.AddStream("Exactly64", std::string(64, 'e'));
  builder.AddStream("Empty", "");
  const size_t folder = builder.AddStorage("Folder");
  builder.AddStream("Journey", "inner", folder);
  builder.AddStream("Map", std::string(65, 'm'), folder);
  const size_t deeper = builder.AddStorage("Deeper", folder);
  builder.AddStream("Leaf", "leaf", deeper);
  builder.AddStorage("Bare");
  return builder.Build();
}

Streams SampleStreams() {
  return {{"Journey", std::string(428, 'j')},  {"\005Properties", "p"},
          {"Exactly64", std::string(64, 'e')}, {"Empty", ""},
          {"Folder/Journey", "inner"},         {"Folder/Map", std::string(65, 'm')},
          {"Folder/Deeper/Leaf", "leaf"}};
}

TEST(CompoundFileBuilder, BuildsWhatTheFormatAllows) {
  for (const uint32_t sectorShift : {9u, 12u}) {
    const std::string file = SampleFile(sectorShift);
    EXPECT_EQ(CompoundFileReader(file).Streams(), SampleStreams());
  }
  EXPECT_EQ(CompoundFileReader(CompoundFileBuilder().Build()).Streams(), Streams());
  CompoundFileBuilder builder;
  EXPECT_THROW(builder.AddStream("Large", std::string(4096, 'x')), std::length_error);
  EXPECT_THROW(builder.AddStream(std::string(32, 'n'), ""), std::length_error);
}

TEST(CompoundFile, ReadsStreamsOfTheTopLevel) {
  for (const uint32_t sectorShift : {9u, 12u}) {
    const std::string file = SampleFile(sectorShift);
    std::string content;
    EXPECT_EQ(ReadStorageStream(file, "Journey", content), 0u);
    EXPECT_EQ(content, std::string(428, 'j'));
    EXPECT_EQ(ReadStorageStream(file, "\005Properties", content), 0u);
    EXPECT_EQ(content, "p");
    EXPECT_EQ(ReadStorageStream(file, "Empty", content), 0u);
    EXPECT_EQ(content, "");
  }
}

TEST(CompoundFile, FindsStreamsByTheirExactNameOnly) {
  const std::string file = SampleFile();
  std::string content = "kept";
  for (const char* name : {"journey", "Journe", "Journey ", "Folder", "Leaf", "Folder/Journey", ""})
    EXPECT_EQ(ReadStorageStream(file, name, content), kStreamNotFound) << name;
  EXPECT_EQ(content, "kept");
}

TEST(CompoundFile, TellsFilesThatAreNone) {
  std::string content = "kept";
  for (const std::string& bytes : {std::string(), std::string("M"), std::string(5000, '\0'),
                                   std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A")})
    EXPECT_EQ(ReadStorageStream(bytes, "Journey", content), kNotAStorage);
  EXPECT_EQ(ReadStorageStream("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "Journey", content), kCorrupt);
  EXPECT_EQ(content, "kept");
}

TEST(CompoundFile, ReplacesOneStreamAndKeepsTheOthers) {
  const std::string file = SampleFile();
  // On both sides of the limit between mini stream and sectors of its own, and of each unit.
  for (const size_t size :
       {0u, 1u, 63u, 64u, 65u, 511u, 512u, 4095u, 4096u, 4097u, 5120u, 100000u}) {
    std::string content;
    for (size_t i = 0; i < size; ++i) content += static_cast<char>(i * 31 + i / 256);
    std::string patched;
    ASSERT_EQ(ReplaceStorageStream(file, "Journey", content, patched), 0u) << size;
    Streams expected = SampleStreams();
    expected["Journey"] = content;
    EXPECT_EQ(CompoundFileReader(patched).Streams(), expected) << size;
    std::string read;
    EXPECT_EQ(ReadStorageStream(patched, "Journey", read), 0u);
    EXPECT_EQ(read, content);
  }
}

TEST(CompoundFile, ReplacesInFilesWithLongTables) {
  // 8 MB take more than the 109 table sectors that the header lists.
  const std::string content(8u << 20, 'x');
  std::string large;
  ASSERT_EQ(ReplaceStorageStream(SampleFile(), "Journey", content, large), 0u);
  EXPECT_EQ(CompoundFileReader(large).Streams().at("Journey"), content);
  std::string small;
  ASSERT_EQ(ReplaceStorageStream(large, "Journey", "short", small), 0u);
  Streams expected = SampleStreams();
  expected["Journey"] = "short";
  EXPECT_EQ(CompoundFileReader(small).Streams(), expected);
}

TEST(CompoundFile, KeepsStoragesAndTheirClassIds) {
  std::string file = SampleFile();
  const std::string classId = "\x01\x23\x45\x67\x89\xAB\xCD\xEF\x10\x32\x54\x76\x98\xBA\xDC\xFE";
  file.replace(CompoundFileReader(file).EntryOffset("Folder") + 80, 16, classId);
  std::string patched;
  ASSERT_EQ(ReplaceStorageStream(file, "Journey", "new", patched), 0u);
  const CompoundFileReader reader(patched);
  EXPECT_EQ(reader.ClassIds(), CompoundFileReader(file).ClassIds());
  EXPECT_EQ(reader.ClassIds().at("Folder"), classId);
  EXPECT_EQ(reader.ClassIds().count("Bare"), 1u);
}

TEST(CompoundFile, GivesTheSameBytesEveryTime) {
  std::string first;
  std::string second;
  ASSERT_EQ(ReplaceStorageStream(SampleFile(), "Journey", "new", first), 0u);
  ASSERT_EQ(ReplaceStorageStream(SampleFile(), "Journey", "new", second), 0u);
  EXPECT_EQ(first, second);
}

TEST(CompoundFile, ReplacesNothingInFilesWithoutTheStream) {
  std::string patched = "kept";
  EXPECT_EQ(ReplaceStorageStream(SampleFile(), "Other", "x", patched), kStreamNotFound);
  EXPECT_EQ(ReplaceStorageStream("plain", "Journey", "x", patched), kNotAStorage);
  EXPECT_EQ(ReplaceStorageStream(SampleFile().substr(0, 700), "Journey", "x", patched), kCorrupt);
  EXPECT_EQ(patched, "kept");
}

TEST(CompoundFile, SurvivesACutAtEveryByte) {
  const std::string file = SampleFile();
  for (size_t size = 0; size < file.size(); ++size) {
    std::string content = "kept";
    const uint32_t status = ReadStorageStream(file.substr(0, size), "Journey", content);
    // The last sector of the file ends in bytes that no stream uses.
    if (status == 0) {
      EXPECT_EQ(content, std::string(428, 'j'));
      EXPECT_GT(size, file.size() - 512);
    } else {
      EXPECT_EQ(status, size < 8 ? kNotAStorage : kCorrupt) << size;
    }
  }
}

TEST(CompoundFile, SurvivesAWrongByteAnywhere) {
  const std::string file = SampleFile();
  size_t survived = 0;
  for (size_t i = 0; i < file.size(); ++i) {
    for (const char wrong : {'\xFF', '\0', '\1'}) {
      std::string damaged = file;
      damaged[i] = wrong;
      std::string content;
      const uint32_t status = ReadStorageStream(damaged, "Journey", content);
      if (status == 0) {
        ++survived;
        EXPECT_LE(content.size(), file.size());
      }
      std::string patched;
      if (ReplaceStorageStream(damaged, "Journey", "new", patched) == 0) {
        EXPECT_EQ(ReadStorageStream(patched, "Journey", content), 0u);
        EXPECT_EQ(content, "new");
      }
    }
  }
  EXPECT_GT(survived, file.size());
}

// Runs one test of a copy of this program.
int RunCopy(const std::string& program, const std::string& test) {
  return std::system((program + " --gtest_brief=1 --gtest_filter=CompoundFile." + test).c_str());
}

// Runs itself again in a folder where there is no module.
TEST(CompoundFile, ReportsThatTheModuleIsMissing) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  if (std::filesystem::exists(program.parent_path() / "corvane_compound_files.so")) {
    const TemporaryFolder folder;
    std::filesystem::copy_file(program, folder.PathTo("tests"));
    EXPECT_EQ(RunCopy(folder.PathTo("tests"), "ReportsThatTheModuleIsMissing"), 0);
    return;
  }
  std::string content = "kept";
  for (int attempt = 0; attempt < 2; ++attempt)
    EXPECT_EQ(ReadStorageStream(SampleFile(), "Journey", content), kModuleMissing);
  EXPECT_EQ(ReplaceStorageStream(SampleFile(), "Journey", "x", content), kModuleMissing);
  EXPECT_EQ(ReadStorageStream("plain", "Journey", content), kNotAStorage);
  EXPECT_EQ(content, "kept");
}

TEST(CompoundFile, FindsTheModuleOfAnInstalledProgram) {
  const TemporaryFolder folder;
  const std::string modules = folder.PathTo("lib/corvane-map");
  std::filesystem::create_directories(folder.PathTo("bin"));
  std::filesystem::create_directories(modules);
  std::filesystem::copy_file("/proc/self/exe", folder.PathTo("bin/tests"));
  std::filesystem::copy_file(CORVANE_BINARY_FOLDER "/bin/corvane_compound_files.so",
                             modules + "/corvane_compound_files.so");
  EXPECT_EQ(RunCopy(folder.PathTo("bin/tests"), "ReadsStreamsOfTheTopLevel"), 0);
}

}  // namespace
