#include "platform/folder.h"

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace {

TEST(Folder, ListsNamesInByteOrder) {
  const TemporaryFolder folder;
  folder.Put("b", "");
  folder.Put(".hidden", "");
  folder.Put("caf\xE9", "");
  std::filesystem::create_directory(folder.PathTo("a"));
  std::vector<WideString> names;
  EXPECT_EQ(ListFolder(folder.WidePathTo(""), names), 0u);
  EXPECT_EQ(names, (std::vector<WideString>{u".hidden", u"a", u"b", WidePath("caf\xE9")}));
  EXPECT_EQ(ListFolder(folder.WidePathTo("none"), names), 2u);
}

TEST(Folder, TellsAttributes) {
  const TemporaryFolder folder;
  EXPECT_EQ(FileAttributes(folder.WidePathTo("")), kAttributeDirectory);
  EXPECT_EQ(FileAttributes(folder.Put("a", "abc")), kAttributeNormal);
  EXPECT_EQ(FileAttributes(folder.WidePathTo("none")), kNoAttributes);
  EXPECT_EQ(FileSize(folder.WidePathTo("a")), 3u);
  EXPECT_EQ(FileSize(folder.WidePathTo("none")), 0u);
}

TEST(Folder, KnowsTheSameFileUnderTwoNames) {
  const TemporaryFolder folder;
  const WideString file = folder.Put("a", "");
  std::filesystem::create_symlink("a", folder.PathTo("link"));
  EXPECT_TRUE(IsSameFile(file, folder.WidePathTo("link")));
  EXPECT_TRUE(IsSameFile(file, folder.WidePathTo("./a")));
  EXPECT_FALSE(IsSameFile(file, folder.Put("b", "")));
  EXPECT_FALSE(IsSameFile(file, folder.WidePathTo("none")));
}

TEST(Folder, CreatesFolders) {
  const TemporaryFolder folder;
  EXPECT_EQ(CreateFolders(folder.WidePathTo("a/b/c")), 0u);
  EXPECT_EQ(CreateFolders(folder.WidePathTo("a/b/c")), 0u);
  EXPECT_TRUE(std::filesystem::is_directory(folder.PathTo("a/b/c")));
  folder.Put("file", "");
  EXPECT_NE(CreateFolders(folder.WidePathTo("file")), 0u);
  EXPECT_NE(CreateFolders(folder.WidePathTo("file/x")), 0u);
}

}  // namespace
