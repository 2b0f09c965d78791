#include "platform/sequential_file.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/temporary_folder.h"

namespace {

TEST(SequentialFile, GivesTheBytesPieceByPiece) {
  const TemporaryFolder folder;
  SequentialFile file;
  ASSERT_EQ(file.Open(folder.Put("a", "abcdefg")), 0u);
  char piece[4];
  EXPECT_EQ(file.Read(piece, 4), 4u);
  EXPECT_EQ(std::string(piece, 4), "abcd");
  EXPECT_EQ(file.Read(piece, 4), 3u);
  EXPECT_EQ(std::string(piece, 3), "efg");
  EXPECT_EQ(file.Read(piece, 4), 0u);
  EXPECT_EQ(file.Read(piece, 4), 0u);
}

TEST(SequentialFile, OpensRegularFilesOnly) {
  const TemporaryFolder folder;
  SequentialFile file;
  EXPECT_EQ(file.Open(folder.WidePathTo("none")), 2u);
  std::filesystem::create_directory(folder.PathTo("folder"));
  EXPECT_EQ(file.Open(folder.WidePathTo("folder")), 5u);
  ASSERT_EQ(mkfifo(folder.PathTo("pipe").c_str(), 0600), 0);
  EXPECT_EQ(file.Open(folder.WidePathTo("pipe")), 87u);
}

TEST(SequentialFile, TellsOfAFileThatIsWrittenToMeanwhile) {
  const TemporaryFolder folder;
  SequentialFile file;
  ASSERT_EQ(file.Open(folder.Put("a", "abc")), 0u);
  EXPECT_EQ(file.CheckUnchanged(), 0u);
  char piece[4];
  EXPECT_EQ(file.Read(piece, 4), 3u);
  EXPECT_EQ(file.CheckUnchanged(), 0u);
  folder.Put("a", "abcd");
  EXPECT_EQ(file.CheckUnchanged(), 32u);
  // The same size, but another time.
  SequentialFile other;
  ASSERT_EQ(other.Open(folder.WidePathTo("a")), 0u);
  std::filesystem::last_write_time(folder.PathTo("a"), {});
  EXPECT_EQ(other.CheckUnchanged(), 32u);
}

TEST(SequentialFile, TellsAboutAFileThatIsNotOpen) {
  SequentialFile file;
  char byte = 0;
  EXPECT_EQ(file.Status(), 0u);
  EXPECT_EQ(file.Read(&byte, 1), std::nullopt);
  EXPECT_NE(file.Status(), 0u);
}

}  // namespace
