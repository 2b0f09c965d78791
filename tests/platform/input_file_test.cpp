#include "platform/input_file.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/temporary_folder.h"

namespace {

TEST(InputFile, HoldsTheWholeFile) {
  const TemporaryFolder folder;
  const std::string content = std::string(100000, 'a') + std::string(3, '\0') + "end";
  InputFile file;
  ASSERT_EQ(file.Open(folder.Put("a", content)), 0u);
  EXPECT_EQ(file.Bytes(), content);
}

TEST(InputFile, GivesMemoryBackAndKeepsTheRest) {
  const TemporaryFolder folder;
  std::string content(5 << 20, 'a');
  content += "end";
  InputFile file;
  ASSERT_EQ(file.Open(folder.Put("a", content)), 0u);
  for (size_t i = 0; i < content.size(); i += 1000) file.DiscardBefore(i);
  file.DiscardBefore(content.size() - 3);
  EXPECT_EQ(file.Bytes().substr(content.size() - 3), "end");
  file.DiscardBefore(content.size());
}

TEST(InputFile, IsEmptyForAnEmptyFile) {
  const TemporaryFolder folder;
  InputFile file;
  EXPECT_EQ(file.Open(folder.Put("a", "")), 0u);
  EXPECT_TRUE(file.Bytes().empty());
}

TEST(InputFile, TellsWhyItCannotBeOpened) {
  const TemporaryFolder folder;
  InputFile file;
  EXPECT_EQ(file.Open(folder.WidePathTo("none")), 2u);
  EXPECT_EQ(file.Open(folder.WidePathTo("")), 5u);
  ASSERT_EQ(mkfifo(folder.PathTo("pipe").c_str(), 0600), 0);
  EXPECT_EQ(file.Open(folder.WidePathTo("pipe")), 87u);
  EXPECT_TRUE(file.Bytes().empty());
}

TEST(InputFile, IsNotTouchedByLaterChanges) {
  const TemporaryFolder folder;
  InputFile file;
  ASSERT_EQ(file.Open(folder.Put("a", std::string(10000, 'a'))), 0u);
  std::filesystem::resize_file(folder.PathTo("a"), 1);
  EXPECT_EQ(file.Bytes(), std::string(10000, 'a'));
}

}  // namespace
