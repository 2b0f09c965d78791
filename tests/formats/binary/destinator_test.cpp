#include "formats/binary/destinator.h"

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "platform/path_text.h"
#include "tests/formats/written_bytes.h"
#include "tests/hex_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

constexpr std::string_view k48AndAHalf = "00 00 00 00 00 40 48 40";
constexpr std::string_view k2AndAQuarter = "00 00 00 00 00 00 02 40";
constexpr std::string_view kMinus1AndAHalf = "00 00 00 00 00 00 F8 BF";

// "Poi..." with its zero unit.
constexpr std::string_view kPoiText = "50 00 6F 00 69 00 2E 00 2E 00 2E 00 00 00";

// Latin text as wide text with its zero unit.
std::string Wide(std::string_view text) {
  std::string bytes;
  for (const char c : text) bytes += c + "\0"s;
  return bytes + "\0\0"s;
}

// A record as the device saves it.
std::string Saved(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view longitude = k2AndAQuarter,
                  std::string_view latitude = k48AndAHalf) {
  return Wide(kind) + Wide(first) + Wide(second) + Wide("3") + Wide("") + Wide("5") + Wide("six") +
         Wide("") + Wide("8") + Repeat(24, 0xAA) + Hex(longitude) + Hex(latitude) +
         Repeat(16, 0xBB);
}

std::string Bytes(const CGpsPointArray& list) { return BytesOf(WriteDestinatorBody, list); }

// ---- Writer ----

TEST(DestinatorWriter, WritesOneRecordAPoint) {
  const auto route = MakeList("ignored", MakePoint(48.5, 2.25, "Caf\u00e9 \u0141", "a,b|\"=", 35),
                              MakePoint(2.25, -1.5));
  EXPECT_EQ(Bytes(route), Hex(kPoiText) + Hex("43 00 61 00 66 00 E9 00 20 00 41 01 00 00") +
                              Hex("61 00 2C 00 62 00 7C 00 22 00 3D 00 00 00") + Repeat(12, 0) +
                              Hex("01 00 00 00 00 00 00 00") + Hex(k2AndAQuarter) +
                              Hex(k48AndAHalf) + Repeat(16, 0) +
                              // The second point has no texts.
                              Hex(kPoiText) + Hex("00 00") + Hex("00 00") + Repeat(12, 0) +
                              Hex("01 00 00 00 00 00 00 00") + Hex(kMinus1AndAHalf) +
                              Hex(k2AndAQuarter) + Repeat(16, 0));
}

TEST(DestinatorWriter, WritesTwoUnitsForACharacterOutsideTheBmp) {
  EXPECT_EQ(Bytes(MakeList("", MakePoint(0, 0, "\U0001F600"))).substr(14, 8),
            Hex("3D D8 00 DE 00 00 00 00"));
}

TEST(DestinatorWriter, CutsTextsAtAZeroByteOfTheirOwn) {
  EXPECT_EQ(Bytes(MakeList("", MakePoint(1, 2, "A\0b"s, "C\0d"s))),
            Bytes(MakeList("", MakePoint(1, 2, "A", "C"))));
}

TEST(DestinatorWriter, WritesNothingForAnEmptyList) { EXPECT_EQ(Bytes(CGpsRoute()), ""); }

TEST(DestinatorWriter, GivesThePlatformsErrorForAFileThatCannotBeCreated) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteDestinator(folder.WidePathTo("missing/a.dat"), CGpsRoute(), 0, true),
            kStatusFileNotFound);
  EXPECT_EQ(WriteDestinator(folder.WidePathTo("."), CGpsRoute(), 0, true), kStatusAccessDenied);
}

TEST(DestinatorWriter, WritesAFileAndIgnoresTheSplitLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(1, 2, "A"), MakePoint(3, 4, "B"));
  EXPECT_EQ(WriteDestinator(folder.WidePathTo("a.dat"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.dat"), Bytes(route));
}

// ---- Reader ----

TEST(DestinatorReader, ReadsAllKindsOfRecords) {
  std::string bytes;
  for (const char* kind : {"City->Street", "Street->City", "Zip->Street", "Intersection",
                           "View_Link", "Poi...", "Dynamic POI", ""})
    bytes += Saved(kind, kind, "note");
  PointLists lists;
  EXPECT_EQ(ParseDestinator(bytes, lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 8u);
  EXPECT_EQ(lists[0]->points[0].name, "City->Street");
  EXPECT_EQ(lists[0]->points[7].name, "note");  // in place of an empty one
  EXPECT_EQ(lists[0]->points[7].comment, "");
  for (const CGpsPoint& point : lists[0]->points) {
    EXPECT_EQ(point.latitude, 48.5);
    EXPECT_EQ(point.longitude, 2.25);
    EXPECT_EQ(point.altitude, 0.0);
  }
}

TEST(DestinatorReader, TakesNameAndCommentFromTheFirstTwoTexts) {
  PointLists lists;
  EXPECT_EQ(ParseDestinator(Saved("Poi...", "Name", "Comment") + Saved("Poi...", "", "Second") +
                                Saved("Poi...", "Only", "") + Saved("Poi...", "", ""),
                            lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 4u);
  EXPECT_EQ(lists[0]->points[0].name, "Name");
  EXPECT_EQ(lists[0]->points[0].comment, "Comment");
  EXPECT_EQ(lists[0]->points[1].name, "Second");
  EXPECT_EQ(lists[0]->points[1].comment, "");
  EXPECT_EQ(lists[0]->points[2].name, "Only");
  EXPECT_EQ(lists[0]->points[2].comment, "");
  EXPECT_EQ(lists[0]->points[3].name, "");
}

TEST(DestinatorReader, ReadsTextOfEveryPlane) {
  const std::string bytes = Hex(kPoiText) + Hex("41 01 3D D8 00 DE 00 00") + Repeat(14, 0) +
                            Repeat(24, 0) + Hex(kMinus1AndAHalf) + Hex(k48AndAHalf) + Repeat(16, 0);
  PointLists lists;
  EXPECT_EQ(ParseDestinator(bytes, lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "\u0141\U0001F600");
  EXPECT_EQ(lists[0]->points[0].longitude, -1.5);
}

TEST(DestinatorReader, KeepsNumbersThatAreNone) {
  PointLists lists;
  EXPECT_EQ(ParseDestinator(
                Saved("Poi...", "A", "", "00 00 00 00 00 00 F0 FF", "00 00 00 00 00 00 F8 7F"),
                lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].longitude, -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(lists[0]->points[0].latitude));
}

TEST(DestinatorReader, UnknownKindEndsTheWalk) {
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(ParseDestinator(
                Saved("Poi...", "A", "") + Saved("poi...", "B", "") + Saved("Poi...", "C", ""),
                lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "A");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 1u);
}

TEST(DestinatorReader, KindWithAZeroByteOfAnotherCharacterIsUnknown) {
  // U+5000 ends in a zero byte; "P" comes behind it.
  PointLists lists;
  EXPECT_EQ(ParseDestinator(Hex("00 50") + Saved("Poi...", "A", ""), lists, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(DestinatorReader, EmptyFileGivesAnEmptyRoute) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadDestinator(folder.Put("a.dat", ""), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(DestinatorReader, GivesThePlatformsErrorForAMissingFile) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadDestinator(folder.WidePathTo("none.dat"), lists, true), kStatusFileNotFound);
  EXPECT_EQ(ReadDestinator(folder.WidePathTo("."), lists, true), kStatusAccessDenied);
  EXPECT_TRUE(lists.empty());
}

TEST(DestinatorReader, KeepsThePointsWhosePositionIsThere) {
  const std::string first = Saved("Poi...", "A", "x");
  const std::string bytes = first + Saved("Intersection", "B", "");
  for (size_t size = 0; size <= bytes.size(); ++size) {
    PointLists lists;
    ConversionContext context;
    const ConversionScope scope(context);
    ASSERT_EQ(ParseDestinator(std::string_view(bytes).substr(0, size), lists, ContextInPlace()),
              kStatusSuccess);
    const size_t count = (size >= first.size() - 16 ? 1 : 0) + (size >= bytes.size() - 16 ? 1 : 0);
    EXPECT_EQ(lists[0]->Count(), count) << size;
    // Bytes that begin a record and do not end it are told of.
    const bool isCut = size != 0 && size < first.size() - 16;
    const bool isNextCut = size > first.size() && size < bytes.size() - 16;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), isCut || isNextCut ? 1u : 0u)
        << size;
  }
}

TEST(DestinatorReader, TakesLongTextsAndBytesThatMeanNothing) {
  PointLists lists;
  const std::string longText(100000, 'x');
  EXPECT_EQ(ParseDestinator(Saved("Poi...", longText, longText), lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, longText);
  for (const char byte : {'A', '\xFF'}) {
    lists.clear();
    EXPECT_EQ(ParseDestinator(std::string(100001, byte), lists, ContextInPlace()), kStatusSuccess);
    EXPECT_EQ(lists[0]->Count(), 0u);
  }
  // Nothing but zeros is one record of no kind and without texts after the other: 74 bytes each,
  // of which the last sixteen may be missing.
  lists.clear();
  EXPECT_EQ(ParseDestinator(std::string(74 * 3 - 16, '\0'), lists, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 3u);
}

TEST(Destinator, WrittenFilesAreNotForReading) {
  // The reader looks for the position 16 bytes behind where the writer puts it and finds the zeros
  // at the end of the record; the record behind it is out of step.
  PointLists lists;
  EXPECT_EQ(ParseDestinator(
                Bytes(MakeList("", MakePoint(48.5, 2.25, "Home", "x"), MakePoint(1, 1, "Away"))),
                lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "Home");
  EXPECT_EQ(lists[0]->points[0].comment, "x");
  EXPECT_TRUE(lists[0]->points[0].IsNull());
}

TEST(Destinator, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadDestinator(WidePath(CORVANE_SOURCE_FOLDER "/examples/scottish-highlands.dat"),
                           lists, true),
            kStatusSuccess);
  const CGpsPointArray& route = *lists.back();
  EXPECT_EQ(route.GetKind(), kKindRoute);
  ASSERT_EQ(route.Count(), 7u);
  EXPECT_EQ(route.points.front().name, "Edinburgh");
  EXPECT_EQ(route.points.back().name, "Inverness");
  EXPECT_EQ(route.points.front().comment, "Castlehill");
  EXPECT_TRUE(route.points[4].IsNear(MakePoint(57.274, -5.5161)));
}

}  // namespace
