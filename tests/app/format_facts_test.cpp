// What docs/format_facts.tsv says of a format is what its writer and the readers do. A fact is
// found by writing: a format holds comments when another comment makes another file.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/list_choice.h"
#include "conversion/read_trip.h"
#include "conversion/format_search.h"
#include "formats/format_rows.h"
#include "platform/path_text.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

using Facts = std::map<std::string, std::string>;  // by the titles of the columns

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream stream(line);
  for (std::string cell; std::getline(stream, cell, '\t');) cells.push_back(cell);
  return cells;
}

std::map<size_t, Facts> ReadFacts() {
  std::ifstream file(CORVANE_SOURCE_FOLDER "/docs/format_facts.tsv");
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> titles = Cells(line);
  std::map<size_t, Facts> facts;
  while (std::getline(file, line)) {
    const std::vector<std::string> cells = Cells(line);
    EXPECT_EQ(cells.size(), titles.size()) << line;
    Facts row;
    for (size_t i = 0; i < std::min(cells.size(), titles.size()); ++i) {
      EXPECT_FALSE(cells[i].empty()) << line;
      row[titles[i]] = cells[i];
    }
    facts[std::stoul(row["row"])] = row;
  }
  return facts;
}

const std::map<size_t, Facts>& AllFacts() {
  static const std::map<size_t, Facts> facts = ReadFacts();
  return facts;
}

// Rows that write files of points.
std::vector<size_t> WritingRows() {
  const FormatTable table = DefaultFormatTable();
  std::vector<size_t> rows;
  for (size_t i = 0; i < table.size(); ++i) {
    if (table[i].write && table[i].textId != 0 && !IsPseudoFormat(table[i])) rows.push_back(i);
  }
  return rows;
}

// Texts and altitudes of the stops that are written.
struct Probe {
  std::string list = "Ring";
  std::string name = "Halt";
  std::string comment = "Rast";
  double altitude = 0;
};

constexpr size_t kStops = 24;

// Stops all over the world, with more digits than any format keeps.
CGpsRoute MakeStops(const Probe& probe) {
  CGpsRoute route;
  route.name = probe.list;
  for (size_t i = 0; i < kStops; ++i) {
    const double step = static_cast<double>(i);
    CGpsPoint stop;
    stop.latitude = 0.35714285714 + std::fmod(step * 23.61803398875, 120) - 60;
    stop.longitude = 0.61803398875 + std::fmod(step * 77.71828182846, 340) - 170;
    stop.altitude = probe.altitude == 0 ? 0 : probe.altitude + step;
    stop.name = probe.name + char('A' + static_cast<int>(i));
    stop.comment = probe.comment + char('A' + static_cast<int>(i));
    route.points.push_back(stop);
  }
  return route;
}

class FormatFacts : public testing::TestWithParam<size_t> {
 protected:
  FormatFacts() : row(table[GetParam()]) {
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    setenv("XDG_CONFIG_HOME", folder.PathTo("settings").c_str(), 1);
  }

  void SetUp() override {
    const auto found = AllFacts().find(GetParam());
    ASSERT_NE(found, AllFacts().end()) << "docs/format_facts.tsv has no row " << GetParam();
    facts = found->second;
    EXPECT_EQ(facts["extension"], Narrow(row.extension));
  }

  static std::string Narrow(const char16_t* text) {
    std::string narrow;
    for (; *text; ++text) narrow += static_cast<char>(*text);
    return narrow;
  }

  // Writes the stops and gives the path of the one file that this makes.
  std::string Write(const Probe& probe) {
    const std::string target = folder.PathTo("target");
    fs::remove_all(target);
    fs::create_directory(target);
    const std::string path = target + "/probe." + Narrow(row.extension);
    EXPECT_EQ(row.write(WidePath(path), MakeStops(probe), 0, true), kStatusSuccess);
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(target)) files.push_back(entry.path());
    EXPECT_EQ(files.size(), 1u);
    return files.empty() ? path : files.front();
  }

  std::string Bytes(const Probe& probe) {
    std::ifstream file(Write(probe), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  // Whether other texts or altitudes make another file.
  bool Differ(const Probe& one, const Probe& other) { return Bytes(one) != Bytes(other); }

  FormatTable table = DefaultFormatTable();
  const CItineraryFormat& row;
  const TemporaryFolder folder;
  Facts facts;
};

std::string Words(bool list, bool names, bool comments, bool altitudes) {
  std::string words;
  if (list) words += "list ";
  if (names) words += "names ";
  if (comments) words += "comments ";
  if (altitudes) words += "altitudes ";
  if (!words.empty()) words.pop_back();
  return words;
}

bool HasWord(const std::string& words, const std::string& word) {
  return (" " + words + " ").find(" " + word + " ") != std::string::npos;
}

TEST_P(FormatFacts, TellWhatAFileHolds) {
  const Probe plain;
  Probe list = plain;
  list.list = "Rung";
  Probe names = plain;
  names.name = "Hilt";
  Probe comments = plain;
  comments.comment = "Rest";
  Probe altitudes = plain;
  altitudes.altitude = 1234;
  EXPECT_EQ(facts["written"], Words(Differ(plain, list), Differ(plain, names),
                                    Differ(plain, comments), Differ(plain, altitudes)));
}

TEST_P(FormatFacts, TellWhichLettersAFileHolds) {
  const Probe western{"Kö", "Kö", "Kö"};
  const Probe otherWestern{"Kä", "Kä", "Kä"};
  const Probe greek{"Αθ", "Αθ", "Αθ"};
  const Probe otherGreek{"Αφ", "Αφ", "Αφ"};
  const bool holdsWestern = Differ(western, otherWestern);
  const bool holdsGreek = Differ(greek, otherGreek);
  EXPECT_EQ(facts["letters"], holdsGreek ? "all" : holdsWestern ? "Latin-1" : "none");
}

struct ReadAgain {
  bool done = false;
  size_t row = 0;  // the one whose reader took it
  std::string listName;
  std::vector<CGpsPoint> stops;
};

ReadAgain Read(const FormatTable& table, const std::string& path) {
  ReadAgain result;
  ConversionContext context;
  const TripRead trip = ReadTrip(table, WidePath(path), context, {.silent = true});
  if (trip.status != kStatusSuccess) return result;
  const CGpsPointArray& list = *trip.lists[SelectLists(trip.lists, ListChoice()).front()];
  result.row = static_cast<size_t>(trip.row - table.data());
  result.listName = list.GetName();
  for (const CGpsPoint& stop : list.points) {
    if (!stop.IsNull()) result.stops.push_back(stop);
  }
  result.done = result.stops.size() == kStops;
  return result;
}

double MetresBetween(const CGpsPoint& one, const CGpsPoint& other) {
  constexpr double kMetresPerDegree = kEarthRadius / kDegreesPerRadian;
  const double north = (one.latitude - other.latitude) * kMetresPerDegree;
  const double east = (one.longitude - other.longitude) * kMetresPerDegree *
                      std::cos(one.latitude / kDegreesPerRadian);
  return std::hypot(north, east);
}

TEST_P(FormatFacts, TellWhatComesBack) {
  const Probe probe{"Ring", "Halt", "Rast", 1234};
  std::string path = Write(probe);
  if (GetParam() == 28) {  // read under another extension than its key
    fs::rename(path, path + ".rte");
    path += ".rte";
  }
  const ReadAgain again = Read(table, path);
  if (!again.done) {
    EXPECT_EQ(facts["back"], "no");
    return;
  }

  const CGpsRoute stops = MakeStops(probe);
  bool names = true;
  bool comments = true;
  bool altitudes = true;
  double shift = 0;
  for (size_t i = 0; i < kStops; ++i) {
    const CGpsPoint& before = stops.At(i);
    const CGpsPoint& after = again.stops[i];
    names = names && after.name.find(before.name) != std::string::npos;
    comments = comments && after.comment.find(before.comment) != std::string::npos;
    altitudes = altitudes && std::fabs(after.altitude - before.altitude) < 0.5;
    shift = std::max(shift, MetresBetween(before, after));
  }
  const bool list = again.listName == probe.list;
  EXPECT_EQ(facts["back"], Words(list, names, comments, altitudes));

  const double metres = std::stod(facts["metres"]);
  EXPECT_LE(shift, metres);
  EXPECT_GE(shift, metres / 4) << "less is lost than the facts say";

  const auto reader = AllFacts().find(again.row);
  ASSERT_NE(reader, AllFacts().end()) << again.row;
  for (const std::string word : {"list", "names", "comments", "altitudes"}) {
    EXPECT_TRUE(!HasWord(facts["back"], word) || HasWord(reader->second.at("read"), word)) << word;
  }
}

TEST_P(FormatFacts, SayWhetherThereIsAReader) {
  EXPECT_EQ(facts["read"] != "-", row.read != nullptr);
}

INSTANTIATE_TEST_SUITE_P(Table, FormatFacts, testing::ValuesIn(WritingRows()),
                         testing::PrintToStringParamName());

}  // namespace
