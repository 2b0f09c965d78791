#include "conversion/read_trip.h"

#include <new>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "base/text_ids.h"
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

uint32_t FailingReader(const WideString&, PointLists&, bool) {
  ContextInPlace context;
  context->Keep(5);
  context->failure.line = 7;
  context->failure.detailTextId = kTextXmlTagMismatch;
  return kStatusFailure;
}

uint32_t Search(const FormatTable& table, const WideString& path) {
  calls.clear();
  ConversionContext context;
  const TripRead trip = ReadTrip(table, path, context, {.silent = true});
  EXPECT_EQ(trip.lists.empty(), trip.status != kStatusSuccess);
  for (const auto& list : trip.lists) EXPECT_FALSE(list->points.empty());
  return trip.status;
}

CItineraryFormat Row(const char16_t* extension, FormatReadFn read) {
  return {extension, 0, read, nullptr, 0};
}

TEST(ReadTrip, TriesRowsOfTheExtensionInTableOrder) {
  const FormatTable table{Row(u"rte", Reader<'a', 11, 0>), Row(u"wpt", Reader<'b', 0, 1>),
                          Row(u"rte", nullptr), Row(u"rte", Reader<'c', 0, 1>),
                          Row(u"rte", Reader<'d', 0, 1>)};
  EXPECT_EQ(Search(table, u"/x/foo.bar.RTE"), kStatusSuccess);
  EXPECT_EQ(calls, "ac");
}

TEST(ReadTrip, GoesOnAfterListsWithoutPoints) {
  const FormatTable table{Row(u"gpx", Reader<'a', 0, 0>), Row(u"gpx", Reader<'b', 0, 2>)};
  EXPECT_EQ(Search(table, u"a.gpx"), kStatusSuccess);
  EXPECT_EQ(calls, "ab");
  const FormatTable empty{Row(u"gpx", Reader<'a', 0, 0>)};
  EXPECT_EQ(Search(empty, u"a.gpx"), kStatusBadFormat);
}

TEST(ReadTrip, EndsAtALockedFileAndAtACancel) {
  for (const auto read : {Reader<'a', 32, 1>, Reader<'a', 1223, 1>, Reader<'a', 0x80030020, 1>}) {
    const FormatTable table{Row(u"rte", read), Row(u"rte", Reader<'b', 0, 1>)};
    EXPECT_EQ(Search(table, u"a.rte"), read(u"", *std::make_unique<PointLists>(), true));
    EXPECT_EQ(calls.substr(0, 1), "a");
    EXPECT_EQ(calls.find('b'), std::string::npos);
  }
}

TEST(ReadTrip, KeepsTheLastResult) {
  const FormatTable table{Row(u"rte", Reader<'a', 11, 0>), Row(u"rte", Reader<'b', 1, 0>)};
  EXPECT_EQ(Search(table, u"a.rte"), 1u);
  EXPECT_EQ(calls, "ab");
}

TEST(ReadTrip, BeginsBehindARowWhoseListsWereNotWanted) {
  const FormatTable table{Row(u"gpx", Reader<'a', 0, 1>), Row(u"rte", Reader<'b', 0, 1>),
                          Row(u"gpx", Reader<'c', 11, 1>)};
  ConversionContext context;
  const TripRead first = ReadTrip(table, u"a.gpx", context, {.silent = true});
  EXPECT_EQ(first.row, &table[0]);
  EXPECT_EQ(first.lists.size(), 1u);
  calls.clear();
  const TripRead second = ReadTrip(table, u"a.gpx", context, {.silent = true, .after = first.row});
  EXPECT_EQ(calls, "c");
  EXPECT_EQ(second.row, &table[2]);
  EXPECT_EQ(second.status, kStatusBadFormat);
  EXPECT_TRUE(second.lists.empty());
  EXPECT_EQ(ReadTrip(table, u"a.gpx", context, {.silent = true, .after = second.row}).row, nullptr);
}

TEST(ReadTrip, ForgetsTheNotesOfReadersThatTheFileWasNotFor) {
  const FormatTable table{Row(u"x", NotingReader<'a', 11, 1>), Row(u"x", NotingReader<'b', 0, 0>),
                          Row(u"x", NotingReader<'c', 0, 1>)};
  calls.clear();
  ConversionContext context;
  const TripRead trip = ReadTrip(table, u"f.x", context, {.silent = true});
  EXPECT_EQ(trip.status, 0u);
  EXPECT_EQ(calls, "abc");
  EXPECT_EQ(trip.notes.Count(ConversionNote::kLinePassedOver), 1u);
  EXPECT_EQ(trip.notes.Count(ConversionNote::kStopLookedUp), 3u);
}

TEST(ReadTrip, TellsTheReasonOfAFailureOnly) {
  const FormatTable table{Row(u"x", FailingReader), Row(u"x", Reader<'b', 0, 1>)};
  ConversionContext context;
  EXPECT_EQ(ReadTrip(table, u"f.x", context, {.silent = true}).reason, FailureReason());
  const FormatTable failing{Row(u"x", FailingReader)};
  const TripRead trip = ReadTrip(failing, u"f.x", context, {.silent = true});
  EXPECT_EQ(trip.status, kStatusFailure);
  EXPECT_EQ(trip.reason, (FailureReason{5, 7, 0, kTextXmlTagMismatch}));
}

TEST(ReadTrip, KnowsNoFileWithoutAnExtensionOfTheTable) {
  const FormatTable table{Row(u"rte", Reader<'a', 0, 1>)};
  EXPECT_EQ(Search(table, u"rte"), kStatusBadFormat);
  EXPECT_EQ(Search(table, u"a.rt"), kStatusBadFormat);
  EXPECT_EQ(Search(table, u"a."), kStatusBadFormat);
  EXPECT_EQ(Search(table, u""), kStatusBadFormat);
  EXPECT_EQ(calls, "");
}

TEST(ReadTrip, TakesAnExceptionForAFileThatCannotBeRead) {
  const FormatTable table{Row(u"trp", ThrowingReader)};
  EXPECT_EQ(Search(table, u"a.trp"), kStatusInvalidData);
  const FormatTable exhausted{Row(u"trp", ExhaustedReader)};
  EXPECT_EQ(Search(exhausted, u"a.trp"), kStatusOutOfMemory);
  const FormatTable next{Row(u"trp", ThrowingReader), Row(u"trp", Reader<'b', 0, 1>)};
  EXPECT_EQ(Search(next, u"a.trp"), kStatusSuccess);
}

}  // namespace
