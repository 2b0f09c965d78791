// What every reader must survive, whatever its format: each row of the table is tried by being
// in the table.

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "base/status.h"
#include "base/text.h"
#include "formats/format_rows.h"
#include "tests/file_content.h"
#include "tests/formats/points_in.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// Calls a reader as the search does: what it throws counts as a file that cannot be read.
uint32_t Read(const CItineraryFormat& row, const WideString& path, PointLists& lists) {
  try {
    return row.read(path, lists, true);
  } catch (const std::exception&) {
    return kStatusInvalidData;
  }
}

class EveryReader : public testing::TestWithParam<size_t> {
 protected:
  EveryReader() : row(DefaultFormatTable()[GetParam()]) {}

  std::string FileName() const { return "file." + NarrowForFile(row.extension); }

  // Reads a file with this content and gives the number of points.
  size_t PointsOf(std::string_view content) {
    PointLists lists;
    Read(row, folder.Put(FileName(), content), lists);
    for (const auto& list : lists) EXPECT_NE(list, nullptr);
    EXPECT_EQ(folder.Get(FileName()).size(), content.size());
    return PointsIn(lists);
  }

  const CItineraryFormat row;
  const TemporaryFolder folder;
};

TEST_P(EveryReader, FindsNothingInNothing) {
  EXPECT_EQ(PointsOf(""), 0u);
  EXPECT_EQ(PointsOf("\r\n\r\n"), 0u);
}

TEST_P(EveryReader, SurvivesEveryByteAlone) {
  for (int byte = 0; byte < 256; ++byte)
    EXPECT_EQ(PointsOf(std::string(1, static_cast<char>(byte))), 0u) << byte;
}

TEST_P(EveryReader, SurvivesZeroBytes) { PointsOf(std::string(100000, '\0')); }

// A line without an end: what grows with its square takes hours. Sanitizers make it too slow at full
// length.
TEST_P(EveryReader, SurvivesMegabytesOfOneCharacter) {
#if defined(NDEBUG)
  constexpr size_t kSize = size_t{16} << 20;
#else
  constexpr size_t kSize = size_t{2} << 20;
#endif
  for (const char character : {'a', '|', ','}) PointsOf(std::string(kSize, character));
}

TEST_P(EveryReader, SurvivesFilesOfOtherFormats) {
  for (const auto& entry : fs::directory_iterator(CORVANE_SOURCE_FOLDER "/examples")) {
    if (!entry.is_regular_file()) continue;
    const std::string content = ContentOf(entry.path());
    PointsOf(content);
    for (size_t length = 0; length < content.size(); length += 1 + content.size() / 50)
      PointsOf(content.substr(0, length));
  }
}

TEST_P(EveryReader, SurvivesItsSeedsCutAtEveryByte) {
  const fs::path seeds =
      fs::path(CORVANE_SOURCE_FOLDER "/fuzz/corpus") / std::to_string(GetParam());
  if (!fs::exists(seeds)) return;
  for (const auto& entry : fs::directory_iterator(seeds)) {
    const std::string content = ContentOf(entry.path());
    for (size_t length = 0; length <= content.size(); ++length) PointsOf(content.substr(0, length));
  }
}

TEST_P(EveryReader, RefusesAFolderAndAMissingFile) {
  PointLists lists;
  Read(row, folder.WidePathTo("none/" + FileName()), lists);
  EXPECT_EQ(PointsIn(lists), 0u);
  fs::create_directory(folder.PathTo(FileName()));
  Read(row, folder.WidePathTo(FileName()), lists);
  EXPECT_EQ(PointsIn(lists), 0u);
  EXPECT_TRUE(fs::is_directory(folder.PathTo(FileName())));
}

TEST_P(EveryReader, RefusesAFileThatMayNotBeRead) {
  fs::permissions(folder.Path(), fs::perms(0777));
  const WideString path = folder.Put(FileName(), "content");
  fs::permissions(folder.PathTo(FileName()), fs::perms(0));
  const pid_t child = fork();
  if (child == 0) {
    // Root may read everything, so the child becomes somebody else.
    if (getuid() == 0 && setuid(65534) != 0) _exit(2);
    PointLists lists;
    Read(row, path, lists);
    _exit(PointsIn(lists) == 0 ? 0 : 1);
  }
  EXPECT_EQ(WaitFor(child), 0);
  fs::permissions(folder.PathTo(FileName()), fs::perms(0600));
  EXPECT_EQ(folder.Get(FileName()), "content");
}

std::vector<size_t> RowsWithAReader() {
  std::vector<size_t> rows;
  std::set<FormatReadFn> seen;
  const FormatTable table = DefaultFormatTable();
  for (size_t i = 0; i < table.size(); ++i) {
    if (table[i].read && seen.insert(table[i].read).second) rows.push_back(i);
  }
  return rows;
}

INSTANTIATE_TEST_SUITE_P(Table, EveryReader, testing::ValuesIn(RowsWithAReader()),
                         [](const testing::TestParamInfo<size_t>& row) {
                           return "Row" + std::to_string(row.param);
                         });

}  // namespace
