#include "formats/format_rows.h"

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/text.h"
#include "conversion/format_search.h"

namespace {

TEST(FormatRows, StandInTheirOrder) {
  const FormatTable table = DefaultFormatTable();
  std::string extensions;
  for (const CItineraryFormat& row : table) extensions += NarrowForFile(row.extension) + " ";
  EXPECT_EQ(extensions,
            "rte rt2 wpt plt gpx axe axg est ptm mps gdb rte wpt gpx gpx gpx gpx gpx gpx tth itn "
            "ov2 rte rt2 plt wpt rte upt mag rte rte rte route store freshroute dat xml xml csv "
            "kml kml bcr xvm rdn trp trp trp itf itf itf xml lmx tour krt trl txt osm rt loc tk "
            "upoi upoi upoi xml ggm here vmm ttd url ");
  ASSERT_EQ(table.size(), 69u);
  const std::vector<uint32_t> textIds = {
      902, 901, 903, 904, 900, 115, 136, 138, 137, 218, 139, 111, 0,   200, 376, 107, 370, 371,
      372, 0,   106, 298, 149, 150, 301, 325, 152, 0,   152, 131, 165, 223, 224, 0,   245, 130,
      373, 249, 116, 117, 303, 135, 216, 134, 219, 263, 374, 250, 299, 328, 259, 225, 260, 261,
      158, 273, 326, 300, 201, 262, 293, 294, 295, 319, 203, 332, 367, 368, 159};
  for (size_t i = 0; i < table.size(); ++i) EXPECT_EQ(table[i].textId, textIds[i]) << i;
}

TEST(FormatRows, NameTheirOptions) {
  const FormatTable table = DefaultFormatTable();
  for (size_t i = 0; i < table.size(); ++i) {
    const uint32_t expected = i == 15 ? 120 : i == 28 ? 153 : i == 64 || i == 66 ? 204 : 0;
    EXPECT_EQ(table[i].optionTextId, expected) << i;
  }
}

TEST(FormatRows, KnowWhichTargetsAreNoFiles) {
  for (const CItineraryFormat& row : DefaultFormatTable()) {
    const std::string extension = NarrowForFile(row.extension);
    const bool isHandOff =
        std::set<std::string>{"ggm", "here", "vmm", "tth", "ttd"}.count(extension);
    EXPECT_EQ(row.facts.isFile, !isHandOff) << extension;
  }
}

TEST(FormatRows, HaveAnInnerFunctionForEachOuterOne) {
  for (const CItineraryFormat& row : DefaultFormatTable()) {
    EXPECT_EQ(row.facts.parse != nullptr, row.read != nullptr) << row.textId;
    EXPECT_EQ(row.facts.emit != nullptr, row.write != nullptr) << row.textId;
  }
}

TEST(FormatRows, KnowWhatOnlyDevicesRead) {
  std::set<uint32_t> onlyWritten;
  for (const CItineraryFormat& row : DefaultFormatTable()) {
    if (!row.facts.readsBack) onlyWritten.insert(row.textId);
  }
  EXPECT_EQ(onlyWritten, (std::set<uint32_t>{130, 201, 299, 328}));
}

TEST(FormatRows, KnowWhatTheirOptionMeans) {
  const FormatTable table = DefaultFormatTable();
  EXPECT_EQ(table[4].facts.option, WriterOption::kRemoveCommas);
  EXPECT_EQ(table[13].facts.option, WriterOption::kMarkViaPoints);
  EXPECT_EQ(table[15].facts.option, WriterOption::kRemoveCommas);
  EXPECT_EQ(table[20].facts.option, WriterOption::kSplit);
  EXPECT_EQ(table[28].facts.option, WriterOption::kExplorist);
  EXPECT_EQ(table[34].facts.option, WriterOption::kHandOff);
  EXPECT_EQ(table[47].facts.largestList, 65535u);
  EXPECT_EQ(table[39].facts.option, WriterOption::kNone);
}

TEST(FormatRows, HaveLabelsAndPatterns) {
  const FormatTable table = DefaultFormatTable();
  EXPECT_EQ(LoadTextUtf8(table[17].textId), "Daimler NTG 5.5 GPX (*.gpx)|*.gpx|");
  EXPECT_EQ(LoadTextUtf8(table[32].textId),
            "Navigon MN 7, iPhone (*.route, *.store, *.targets)|*.route;*.store;*.targets|");
  EXPECT_EQ(LoadTextUtf8(table[13].textId), "Garmin N\u00fcvi, GPX MapSource (*.gpx)|*.gpx|");
  EXPECT_EQ(LoadTextUtf8(table[64].textId), "Google Maps||");
  for (const CItineraryFormat& row : table) {
    if (row.textId == 0) continue;
    EXPECT_FALSE(FormatLabel(row).empty()) << row.textId;
    EXPECT_TRUE(LoadTextUtf8(row.textId).ends_with('|')) << row.textId;
  }
}

// The rows whose functions come with their format. This list only ever shrinks.
TEST(FormatRows, StillWithoutFunctions) {
  const std::set<size_t> kMissingReaders = {68};
  const std::set<size_t> kMissingWriters = {19, 64, 65, 66, 67};
  const std::set<size_t> kReaders = {5,  6,  7,  8,  9,  10, 11, 12, 15, 16, 20, 21, 22, 23, 24, 25,
                                     26, 27, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 41, 42, 43,
                                     44, 46, 47, 50, 51, 52, 53, 54, 55, 56, 57, 59, 60, 63, 68};
  const std::set<size_t> kNoWriters = {6, 12, 26, 27, 33, 60, 68};
  const FormatTable table = DefaultFormatTable();
  for (size_t i = 0; i < table.size(); ++i) {
    EXPECT_EQ(table[i].read != nullptr, kReaders.contains(i) && !kMissingReaders.contains(i)) << i;
    EXPECT_EQ(table[i].write != nullptr, !kNoWriters.contains(i) && !kMissingWriters.contains(i))
        << i;
  }
}

}  // namespace
