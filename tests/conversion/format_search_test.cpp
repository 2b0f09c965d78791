#include "conversion/format_search.h"

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/localized_text.h"
#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/list_builder.h"

namespace {

// Readers that answer with the status of their name, and keep a diary of who was called.
std::string calls;

template <char kName, uint32_t kStatus, int kPoints>
uint32_t Reader(const WideString&, PointLists& lists, bool) {
  calls += kName;
  auto& route = AddList<CGpsRoute>(lists);
  for (int i = 0; i < kPoints; ++i) route.points.push_back(MakePoint(1, 1));
  return kStatus;
}

// Notes a line that it passes over, and answers as above.
template <char kName, uint32_t kStatus, int kPoints>
uint32_t NotingReader(const WideString& path, PointLists& lists, bool silent) {
  ContextInPlace context;
  context->Note(ConversionNote::kLinePassedOver);
  context->Note(ConversionNote::kStopLookedUp);
  return Reader<kName, kStatus, kPoints>(path, lists, silent);
}

uint32_t ThrowingReader(const WideString&, PointLists&, bool) {
  calls += 't';
  throw std::runtime_error("no such key");
}

uint32_t ExhaustedReader(const WideString&, PointLists&, bool) { throw std::bad_alloc(); }

uint32_t NoWriter(const WideString&, const CGpsPointArray&, uint32_t, bool) { return 0; }

uint32_t Search(const FormatTable& table, const WideString& path, uint32_t accepted = 0) {
  calls.clear();
  ContextInPlace context;
  return SearchReaders(table, path, true, context,
                       [accepted](const CItineraryFormat&, PointLists& lists) {
                         EXPECT_FALSE(lists.empty());
                         for (const auto& list : lists) EXPECT_FALSE(list->points.empty());
                         return accepted;
                       });
}

CItineraryFormat Row(const char16_t* extension, FormatReadFn read, FormatWriteFn write = nullptr,
                     uint32_t textId = 0) {
  return {extension, textId, read, write, 0};
}

TEST(SearchReaders, TriesRowsOfTheExtensionInTableOrder) {
  const FormatTable table{Row(u"rte", Reader<'a', 11, 0>), Row(u"wpt", Reader<'b', 0, 1>),
                          Row(u"rte", nullptr), Row(u"rte", Reader<'c', 0, 1>),
                          Row(u"rte", Reader<'d', 0, 1>)};
  EXPECT_EQ(Search(table, u"/x/foo.bar.RTE"), kStatusSuccess);
  EXPECT_EQ(calls, "ac");
}

TEST(SearchReaders, GoesOnAfterListsWithoutPoints) {
  const FormatTable table{Row(u"gpx", Reader<'a', 0, 0>), Row(u"gpx", Reader<'b', 0, 2>)};
  EXPECT_EQ(Search(table, u"a.gpx"), kStatusSuccess);
  EXPECT_EQ(calls, "ab");
  const FormatTable empty{Row(u"gpx", Reader<'a', 0, 0>)};
  EXPECT_EQ(Search(empty, u"a.gpx"), kStatusBadFormat);
}

TEST(SearchReaders, EndsAtALockedFileAndAtACancel) {
  for (const auto read : {Reader<'a', 32, 1>, Reader<'a', 1223, 1>, Reader<'a', 0x80030020, 1>}) {
    const FormatTable table{Row(u"rte", read), Row(u"rte", Reader<'b', 0, 1>)};
    EXPECT_EQ(Search(table, u"a.rte"), read(u"", *std::make_unique<PointLists>(), true));
    EXPECT_EQ(calls.substr(0, 1), "a");
    EXPECT_EQ(calls.find('b'), std::string::npos);
  }
}

TEST(SearchReaders, KeepsTheLastResult) {
  const FormatTable table{Row(u"rte", Reader<'a', 11, 0>), Row(u"rte", Reader<'b', 1, 0>)};
  EXPECT_EQ(Search(table, u"a.rte"), 1u);
  EXPECT_EQ(calls, "ab");
}

TEST(SearchReaders, GoesOnWhenTheUserDeclines) {
  const FormatTable table{Row(u"gpx", Reader<'a', 0, 1>), Row(u"gpx", Reader<'b', 11, 1>)};
  EXPECT_EQ(Search(table, u"a.gpx", kStatusDeclined), kStatusBadFormat);
  EXPECT_EQ(calls, "ab");
  const FormatTable last{Row(u"gpx", Reader<'a', 0, 1>)};
  EXPECT_EQ(Search(last, u"a.gpx", kStatusDeclined), kStatusDeclined);
}

TEST(SearchReaders, ForgetsTheNotesOfReadersThatTheFileWasNotFor) {
  ConversionContext context;
  const ConversionScope scope(context);
  const FormatTable table{Row(u"x", NotingReader<'a', 11, 1>), Row(u"x", NotingReader<'b', 0, 0>),
                          Row(u"x", NotingReader<'c', 0, 1>)};
  EXPECT_EQ(Search(table, u"f.x"), 0u);
  EXPECT_EQ(calls, "abc");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopLookedUp), 3u);
}

TEST(SearchReaders, KnowsNoFileWithoutAnExtensionOfTheTable) {
  const FormatTable table{Row(u"rte", Reader<'a', 0, 1>)};
  EXPECT_EQ(Search(table, u"rte"), kStatusBadFormat);
  EXPECT_EQ(Search(table, u"a.rt"), kStatusBadFormat);
  EXPECT_EQ(Search(table, u"a."), kStatusBadFormat);
  EXPECT_EQ(Search(table, u""), kStatusBadFormat);
  EXPECT_EQ(calls, "");
}

TEST(SearchReaders, TakesAnExceptionForAFileThatCannotBeRead) {
  const FormatTable table{Row(u"trp", ThrowingReader)};
  EXPECT_EQ(Search(table, u"a.trp"), kStatusInvalidData);
  const FormatTable exhausted{Row(u"trp", ExhaustedReader)};
  EXPECT_EQ(Search(exhausted, u"a.trp"), kStatusOutOfMemory);
  const FormatTable next{Row(u"trp", ThrowingReader), Row(u"trp", Reader<'b', 0, 1>)};
  EXPECT_EQ(Search(next, u"a.trp"), kStatusSuccess);
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
  for (const char16_t* extension : {u"ggm", u"here", u"vmm", u"tth", u"ttd"})
    EXPECT_TRUE(IsPseudoFormat(Row(extension, nullptr)));
  EXPECT_FALSE(IsPseudoFormat(Row(u"GGM", nullptr)));
  EXPECT_FALSE(IsPseudoFormat(Row(u"url", nullptr)));
}

TEST(FileDialogs, OfferAllFormatsFirstAndAllFilesLast) {
  const auto read = Reader<'a', 0, 1>;
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
                          Row(u"c", Reader<'a', 0, 1>, nullptr, 107),
                          Row(u"d", nullptr, NoWriter, 108)};
  EXPECT_EQ(ExportList(table), (std::vector<const CItineraryFormat*>{&table[1], &table[3]}));
}

}  // namespace
