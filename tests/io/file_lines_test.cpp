#include "io/file_lines.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace {

class FileLinesTest : public testing::Test {
 protected:
  // Reads a file of this content and gives its lines, each behind a "|".
  std::string LinesOf(const std::string& content) {
    std::string lines;
    InputFile file;
    EXPECT_EQ(file.Open(m_folder.Put("lines.txt", content)), kStatusSuccess);
    FileLines taken(file);
    for (std::string_view line; taken.Next(line);) lines.append("|").append(line);
    return lines;
  }

  TemporaryFolder m_folder;
};

TEST_F(FileLinesTest, SplitsAsTextIsSplit) {
  EXPECT_EQ(LinesOf(""), "");
  EXPECT_EQ(LinesOf("one"), "|one");
  EXPECT_EQ(LinesOf("one\r\n\ntwo\n"), "|one||two");
}

TEST_F(FileLinesTest, KeepsEveryLineOfAFileThatIsGivenBackMeanwhile) {
  // Several steps of a megabyte, and lines that cross their ends.
  std::string content;
  std::string expected;
  for (int i = 0; i < 400000; ++i) {
    const std::string line = "line " + std::to_string(i);
    content += line + "\n";
    expected += "|" + line;
  }
  EXPECT_TRUE(LinesOf(content) == expected);
}

}  // namespace
