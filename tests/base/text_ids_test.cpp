#include "base/text_ids.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "resources/string_tables.h"

namespace {

namespace fs = std::filesystem;

const fs::path kSources = CORVANE_SOURCE_FOLDER;

// Folders that hold no code of the program.
const std::set<std::string> kNotRooms = {"bench", "build", "docs", "fuzz", "resources", "tests"};

std::string ContentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The sources of all rooms, path and content.
std::vector<std::pair<std::string, std::string>> RoomSources() {
  std::vector<std::pair<std::string, std::string>> sources;
  for (const fs::directory_entry& room : fs::directory_iterator(kSources)) {
    const std::string name = room.path().filename();
    if (!room.is_directory() || name.starts_with('.') || kNotRooms.contains(name)) continue;
    for (auto at = fs::recursive_directory_iterator(room); at != fs::end(at); ++at) {
      if (at->path().filename() == "node_modules") at.disable_recursion_pending();
      const fs::path extension = at->path().extension();
      if (extension == ".cpp" || extension == ".h")
        sources.emplace_back(at->path().string(), ContentOf(at->path()));
    }
  }
  return sources;
}

struct NumberedName {
  uint32_t id;
  std::string name;
};

std::vector<NumberedName> Names() {
  std::istringstream lines(ContentOf(kSources / "resources/strings/names.tsv"));
  std::vector<NumberedName> names;
  NumberedName next;
  while (lines >> next.id >> next.name) names.push_back(next);
  return names;
}

std::set<std::string> NamesIn(const std::string& source) {
  static const std::regex name("\\bkText([A-Z][A-Za-z0-9]*)");
  std::set<std::string> names;
  for (std::sregex_iterator found(source.begin(), source.end(), name), end; found != end; ++found)
    names.insert((*found)[1]);
  return names;
}

TEST(TextIds, AreTheNumbersOfTheTables) {
  static_assert(kTextUnknownFormat == 164);
  EXPECT_EQ(kStringsEn.Find(kTextUnknownFormat), "Unknown file format.");
  EXPECT_EQ(kStringsDe.Find(kTextNo), "Nein");
  EXPECT_EQ(kStringsEn.Find(kTextNoColumn), "No");
}

TEST(TextIds, EachNamedNumberHasAText) {
  const std::vector<NumberedName> names = Names();
  ASSERT_GT(names.size(), 100u);
  for (const NumberedName& entry : names)
    EXPECT_FALSE(kStringsEn.Find(entry.id).empty()) << entry.id << ' ' << entry.name;
}

TEST(TextIds, EachNameIsUsed) {
  std::set<std::string> used;
  for (const auto& [path, source] : RoomSources()) used.merge(NamesIn(source));
  for (const NumberedName& entry : Names())
    EXPECT_TRUE(used.contains(entry.name)) << "nothing uses " << entry.id << ' ' << entry.name;
}

TEST(TextIds, NoSourceSpellsANumberItself) {
  const std::regex spelled(
      "\\bkText[A-Z][A-Za-z0-9]*\\s*(=|\\{)\\s*[0-9]|"
      "\\b(FormatText|LoadText|LoadTextUtf8)\\(\\s*[0-9]");
  size_t sources = 0;
  for (const auto& [path, source] : RoomSources()) {
    ++sources;
    std::smatch found;
    EXPECT_FALSE(std::regex_search(source, found, spelled))
        << path << ": " << found.str() << "; enter the number in resources/strings/names.tsv";
  }
  EXPECT_GT(sources, 200u);
}

}  // namespace
