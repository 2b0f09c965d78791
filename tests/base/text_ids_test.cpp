#include "base/text_ids.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

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

// Texts that follow a named one, and are found by counting from there.
struct TextRun {
  const char* first;
  uint32_t count;
};

constexpr TextRun kRuns[] = {{"NoCategory", 15}, {"FirstNavigationError", 21}};

// The language's code stands at two numbers; the second is for services that ask for it there.
constexpr uint32_t kLanguageCodeAgain = 337;

TEST(TextIds, EachTextIsUsed) {
  std::set<uint32_t> used = {kLanguageCodeAgain};
  for (const NumberedName& entry : Names()) {
    used.insert(entry.id);
    for (const TextRun& run : kRuns) {
      for (uint32_t i = 0; entry.name == run.first && i < run.count; ++i) used.insert(entry.id + i);
    }
  }
  // A row of the format table begins with its extension and the number of its text.
  const std::string rows = ContentOf(kSources / "formats/format_rows.cpp");
  const std::regex row("\\{u\"[a-z0-9]+\", ([0-9]+), ");
  for (std::sregex_iterator found(rows.begin(), rows.end(), row), end; found != end; ++found)
    used.insert(static_cast<uint32_t>(std::stoul((*found)[1])));
  for (size_t i = 0; i < kStringsEn.count; ++i) {
    const NumberedString& text = kStringsEn.begin[i];
    EXPECT_TRUE(used.contains(text.id)) << "nothing shows " << text.id << ": " << text.text;
  }
}

// Functions that show their first argument to the user.
const std::set<std::string_view> kShowing = {"Complain",
                                             "QAction",
                                             "QCheckBox",
                                             "QLabel",
                                             "QPushButton",
                                             "ShowBox",
                                             "ShowMessage",
                                             "ShowMessageBox",
                                             "ShowNotice",
                                             "ShowTotals",
                                             "Tell",
                                             "addAction",
                                             "addItem",
                                             "addMenu",
                                             "addRow",
                                             "addTab",
                                             "setAccessibleName",
                                             "setPlaceholderText",
                                             "setPrefix",
                                             "setStatusTip",
                                             "setSpecialValueText",
                                             "setText",
                                             "setTitle",
                                             "setToolTip",
                                             "setWhatsThis",
                                             "setWindowTitle"};

// The function whose first argument begins at the end of `code`; empty where none does.
std::string_view CalledAtEnd(std::string_view code) {
  for (const std::string_view wrapper :
       {"QStringLiteral(", "QLatin1String(", "QString::fromUtf8(", "u", "u8"}) {
    if (code.ends_with(wrapper)) code.remove_suffix(wrapper.size());
  }
  if (!code.ends_with('(')) return {};
  code.remove_suffix(1);
  const auto isPartOfName = [](unsigned char c) { return std::isalnum(c) || c == '_'; };
  const auto start = std::find_if_not(code.rbegin(), code.rend(), isPartOfName);
  return code.substr(static_cast<size_t>(code.rend() - start));
}

// Two letters in a row are a word; one is a sign or a unit.
bool HasWord(std::string_view text) {
  const auto isLetter = [](unsigned char c) { return std::isalpha(c) != 0; };
  return std::adjacent_find(text.begin(), text.end(), [&](char a, char b) {
           return isLetter(static_cast<unsigned char>(a)) &&
                  isLetter(static_cast<unsigned char>(b));
         }) != text.end();
}

TEST(TextIds, UserTextsStandInTheTables) {
  EXPECT_EQ(CalledAtEnd("box.setText(QStringLiteral("), "setText");
  EXPECT_EQ(CalledAtEnd("Tell(u"), "Tell");
  EXPECT_EQ(CalledAtEnd("x = "), "");
  for (const auto& [path, source] : RoomSources()) {
    const std::string_view code = source;
    for (size_t quote = code.find('"'); quote != code.npos; quote = code.find('"', quote + 1)) {
      if (!kShowing.contains(CalledAtEnd(code.substr(0, quote)))) continue;
      const std::string_view text = code.substr(quote + 1, code.find('"', quote + 1) - quote - 1);
      EXPECT_FALSE(HasWord(text)) << path << ": " << text
                                  << "; user texts stand in resources/strings";
    }
  }
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
