#include "conversion/format_search.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/localized_text.h"

namespace {

uint32_t NoReader(const WideString&, PointLists&, bool) { return 1; }
uint32_t NoWriter(const WideString&, const CGpsPointArray&, uint32_t, bool) { return 0; }

CItineraryFormat Row(const char16_t* extension, FormatReadFn read, FormatWriteFn write = nullptr,
                     uint32_t textId = 0) {
  return {extension, textId, read, write, 0};
}

TEST(FindWriter, TakesTheFirstRowOfTheExtensionWithAWriter) {
  const FormatTable table{Row(u"gpx", nullptr, nullptr, 107), Row(u"gpx", nullptr, NoWriter, 900),
                          Row(u"gpx", nullptr, NoWriter, 376)};
  EXPECT_EQ(FindWriter(table, u"gpx"), &table[1]);
  EXPECT_EQ(FindWriter(table, u"GPX"), &table[1]);
  EXPECT_EQ(FindWriter(table, u"gpx:376"), &table[2]);
  EXPECT_EQ(FindWriter(table, u"gpx:107"), nullptr);
  EXPECT_EQ(FindWriter(table, u"gp"), nullptr);
  EXPECT_EQ(FindWriter(table, u""), nullptr);
  EXPECT_EQ(FormatKey(table, table[1]), "gpx");
  EXPECT_EQ(FormatKey(table, table[2]), "gpx:376");
}

TEST(FormatTexts, AreCutAtTheBars) {
  const CItineraryFormat itn = Row(u"itn", nullptr, nullptr, 106);
  EXPECT_EQ(FormatLabel(itn), "TomTom Itinerary (*.itn)");
  EXPECT_EQ(FormatPatterns(itn), "*.itn");
  const CItineraryFormat pcx5 = Row(u"rte", nullptr, nullptr, 111);
  EXPECT_EQ(FormatPatterns(pcx5), "*.rte;*.wpt");
  const CItineraryFormat maps = Row(u"ggm", nullptr, nullptr, 203);
  EXPECT_EQ(FormatLabel(maps), "Google Maps");
  EXPECT_EQ(FormatPatterns(maps), "");
  EXPECT_EQ(FormatLabel(Row(u"wpt", nullptr)), "");
}

TEST(FormatTexts, TellTargetsThatAreNoFiles) {
  CItineraryFormat row = Row(u"ggm", nullptr);
  EXPECT_FALSE(IsPseudoFormat(row));
  row.facts.isFile = false;
  EXPECT_TRUE(IsPseudoFormat(row));
}

TEST(FileDialogs, OfferAllFormatsFirstAndAllFilesLast) {
  const auto read = NoReader;
  const FormatTable table{Row(u"itn", read, nullptr, 106), Row(u"wpt", read),
                          Row(u"rte", nullptr, NoWriter, 902), Row(u"rte", read, nullptr, 131),
                          Row(u"rte", read, nullptr, 165)};
  EXPECT_EQ(OpenFilter(table),
            u"All formats|*.itn;*.rte|TomTom Itinerary (*.itn)|*.itn|"
            u"Navigon MN 4 & 5, MioMap 2 (*.rte)|*.rte|Navigon MN 6 (*.rte)|*.rte|"
            u"All files (*.*)|*.*||");
  EXPECT_EQ(SaveFilter(table[0]), u"TomTom Itinerary (*.itn)|*.itn|All files (*.*)|*.*||");
}

TEST(ExportList, HoldsLabelledRowsWithAWriter) {
  const FormatTable table{Row(u"a", nullptr, NoWriter, 0), Row(u"b", nullptr, NoWriter, 106),
                          Row(u"c", NoReader, nullptr, 107), Row(u"d", nullptr, NoWriter, 108)};
  EXPECT_EQ(ExportList(table), (std::vector<const CItineraryFormat*>{&table[1], &table[3]}));
}

}  // namespace
