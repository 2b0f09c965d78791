#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/binary/autoroute.h"
#include "io/compound_file.h"
#include "resources/compound_file_builder.h"
#include "tests/formats/binary/autoroute_bytes.h"
#include "tests/temporary_folder.h"

namespace {

using namespace autoroute;
using std::string_literals::operator""s;

// A record as a map program writes it. Both positions are longitude, latitude.
struct Stop {
  std::string narrow;
  std::string wide;
  int32_t head[2];
  int32_t tail[2];

  std::string Bytes(size_t headSize) const {
    std::string bytes(32, '\0');
    bytes += Words({head[0], head[1]});
    bytes.resize(headSize - 1, '\x7F');  // what is unknown
    bytes += static_cast<char>(narrow.size());
    return bytes + narrow + "\xFF\xFE\xFF" + static_cast<char>(wide.size() / 2) + wide +
           Words({0, 1, 4, 0, 1, 0, 0, 0, 99, tail[0], tail[1], 99, 0, 0, 0, 0, 6, 0, 0});
  }
};

// 0x20000000 is an eighth of the circle, 45 degrees.
const Stop kFirst{"A?", "A\0\x41\x01"s, {0x20000000, 0x10000000}, {0x20000000, 0x10000000}};
const Stop kSecond{"B", "B\0"s, {-0x40000000, -0x20000000}, {-0x40000000, -0x20000000}};

CGpsRoute ParsedJourney(const std::string& journey, int32_t version) {
  CGpsRoute route;
  ParseJourney(journey, version, route, ContextInPlace());
  return route;
}

CGpsRoute ParsedStop(const Stop& stop) { return ParsedJourney(JourneyOf(1, stop.Bytes(41)), 12); }

TEST(AutoRouteReader, ReadsTheHeadsOfAllVersions) {
  for (const auto& [version, headSize] :
       {std::pair(-1, 41), std::pair(0, 41), std::pair(13, 41), std::pair(14, 49),
        std::pair(15, 49), std::pair(16, 65), std::pair(19, 65)}) {
    const auto size = static_cast<size_t>(headSize);
    const std::string journey = JourneyOf(2, kFirst.Bytes(size) + kSecond.Bytes(size));
    PointLists lists;
    ASSERT_EQ(ParseAutoRoute(MapFile(version, journey), lists, ContextInPlace()), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
    EXPECT_EQ(lists[0]->name, "");
    ASSERT_EQ(lists[0]->Count(), 2u) << version;
    EXPECT_EQ(lists[0]->At(0).name, "A\u0141");
    EXPECT_EQ(lists[0]->At(0).latitude, 22.5);
    EXPECT_EQ(lists[0]->At(0).longitude, 45.0);
    EXPECT_EQ(lists[0]->At(1).name, "B");
    EXPECT_EQ(lists[0]->At(1).latitude, -45.0);
    EXPECT_EQ(lists[0]->At(1).longitude, -90.0);
    EXPECT_EQ(lists[0]->At(1).altitude, 0.0);
    EXPECT_EQ(lists[0]->At(1).comment, "");
  }
}

TEST(AutoRouteReader, RoundsCoordinatesToSinglePrecision) {
  // 1193046 units are 0.09999996051192284 degrees.
  const auto route = ParsedStop({"", "", {-1193046, 1193046}, {-1193046, 1193046}});
  EXPECT_EQ(route.At(0).latitude, 0.09999996423721313);
  EXPECT_EQ(route.At(0).longitude, -0.09999996423721313);
  const auto edge = ParsedStop({"", "", {INT32_MIN, INT32_MAX}, {INT32_MIN, INT32_MAX}});
  EXPECT_EQ(edge.At(0).longitude, -180.0);
  EXPECT_EQ(edge.At(0).latitude, 180.0);
}

TEST(AutoRouteReader, TakesTheTailWhenThePositionsLieApart) {
  constexpr int32_t kEighth = 0x20000000;
  constexpr int32_t kSixteenth = 0x10000000;
  // 2048 units are 0.000171661376953125 degrees, which survive single precision below 32 degrees.
  const auto apart = ParsedStop({"", "", {kSixteenth, kSixteenth}, {kSixteenth, 0x10000800}});
  EXPECT_EQ(apart.At(0).latitude, 22.500171661376953);
  EXPECT_EQ(apart.At(0).longitude, 22.5);
  // One axis is enough, and both coordinates are taken from the tail.
  const auto byLatitude = ParsedStop({"", "", {1000, kEighth}, {0, kEighth + 1001}});
  EXPECT_EQ(byLatitude.At(0).longitude, 0.0);
  const auto byLongitude = ParsedStop({"", "", {kEighth - 1001, 1000}, {kEighth, 0}});
  EXPECT_EQ(byLongitude.At(0).latitude, 0.0);
  EXPECT_EQ(byLongitude.At(0).longitude, 45.0);
  // 1000 units apart on both axes is still the same place.
  const auto close = ParsedStop({"", "", {1000, -1000}, {0, 0}});
  EXPECT_EQ(close.At(0).longitude, static_cast<float>(1000 * 360.0 / 4294967296.0));
  EXPECT_EQ(close.At(0).latitude, -close.At(0).longitude);
  // The two ends of the number line are far apart.
  const auto ends = ParsedStop({"", "", {INT32_MAX, kEighth}, {INT32_MIN, 0}});
  EXPECT_EQ(ends.At(0).longitude, -180.0);
  EXPECT_EQ(ends.At(0).latitude, 0.0);
}

TEST(AutoRouteReader, TakesTheLengthOfTheNameFromTheHeadAndTheTailFromTheMark) {
  // The head counts one character, the mark three: the tail stands behind all three.
  const Stop stop{"x", "a\0b\0c\0"s, {0, 0}, {0x20000000, 0x20000000}};
  const CGpsRoute route = ParsedJourney(JourneyOf(2, stop.Bytes(41) + kSecond.Bytes(41)), 12);
  ASSERT_EQ(route.Count(), 2u);
  EXPECT_EQ(route.At(0).name, "a");
  EXPECT_EQ(route.At(0).latitude, 45.0);
  EXPECT_EQ(route.At(1).name, "B");
  // The head counts three, the mark one: the name goes on into the tail's first words, 0 and 1.
  const Stop longer{"xyz", "a\0"s, {0, 0}, {0x20000000, 0x20000000}};
  const CGpsRoute other = ParsedJourney(JourneyOf(2, longer.Bytes(41) + kSecond.Bytes(41)), 12);
  ASSERT_EQ(other.Count(), 2u);
  EXPECT_EQ(other.At(0).name, "a\0\0"s);
  EXPECT_EQ(other.At(0).latitude, 45.0);
  EXPECT_EQ(other.At(1).name, "B");
}

TEST(AutoRouteReader, ReplacesHalvesOfCharacters) {
  EXPECT_EQ(ParsedStop({"??", "\x3D\xD8x\0"s, {}, {}}).At(0).name, "\uFFFDx");
  EXPECT_EQ(ParsedStop({"??", "\x3D\xD8\x00\xDE"s, {}, {}}).At(0).name, "\U0001F600");
}

TEST(AutoRouteReader, KeepsStopsWithoutAPosition) {
  const CGpsRoute route = ParsedStop({"x", "x\0"s, {0, 0}, {0, 0}});
  ASSERT_EQ(route.Count(), 1u);
  EXPECT_TRUE(route.At(0).IsNull());
}

TEST(AutoRouteReader, EndsWithTheLastStopThatIsThere) {
  const std::string one = JourneyOf(2, kFirst.Bytes(41));
  const std::string two = one.substr(0, one.size() - 8) + kSecond.Bytes(41);
  // The last two of the words that are needed end 44 bytes into the tail.
  const size_t firstEnd = 32 + 41 + 2 + 4 + 4 + 44;
  const size_t secondEnd = two.size() - 76 + 44;
  for (size_t size = 0; size <= two.size(); ++size) {
    ConversionContext context;
    const ConversionScope scope(context);
    const CGpsRoute route = ParsedJourney(two.substr(0, size), 12);
    EXPECT_EQ(route.Count(), size < firstEnd ? 0u : size < secondEnd ? 1u : 2u) << size;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver),
              size >= 20 && size < secondEnd ? 1u : 0u);
  }
}

TEST(AutoRouteReader, EndsAtOnceForImpossibleCounts) {
  EXPECT_EQ(ParsedJourney(JourneyOf(-1, kFirst.Bytes(41)), 12).Count(), 0u);
  EXPECT_EQ(ParsedJourney(JourneyOf(INT32_MIN, kFirst.Bytes(41)), 12).Count(), 0u);
  EXPECT_EQ(ParsedJourney(JourneyOf(INT32_MAX, kFirst.Bytes(41)), 12).Count(), 1u);
  EXPECT_EQ(ParsedJourney(JourneyOf(0, kFirst.Bytes(41)), 12).Count(), 0u);
}

TEST(AutoRouteReader, SurvivesACutAtEveryByte) {
  const std::string file = MapFile(12, JourneyOf(2, kFirst.Bytes(41) + kSecond.Bytes(41)));
  for (size_t size = 0; size < file.size(); ++size) {
    PointLists lists;
    const uint32_t status = ParseAutoRoute(file.substr(0, size), lists, ContextInPlace());
    ASSERT_EQ(lists.size(), 1u);
    if (status == kStatusSuccess) {
      EXPECT_EQ(lists[0]->Count(), 2u);
    } else {
      EXPECT_EQ(lists[0]->Count(), 0u);
      EXPECT_EQ(status, size < 8 ? kStatusFailure : kStatusStorageCorrupt);
    }
  }
}

TEST(AutoRouteReader, ReportsWhatCannotBeRead) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.PathTo("folder.axe"));
  PointLists lists;
  EXPECT_EQ(ReadAutoRoute(folder.WidePathTo("none.axe"), lists, true), 0x80030002u);
  EXPECT_EQ(ReadAutoRoute(folder.WidePathTo("folder.axe"), lists, true), 0x80030005u);
  EXPECT_EQ(ReadAutoRoute(folder.Put("empty.axe", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadAutoRoute(folder.Put("byte.axe", "\xD0"), lists, true), kStatusFailure);
  EXPECT_EQ(ReadAutoRoute(folder.Put("text.axe", std::string(999, '\0')), lists, true),
            kStatusFailure);
  CompoundFileBuilder other;
  other.AddStream("WordDocument", "text");
  EXPECT_EQ(ReadAutoRoute(folder.Put("other.axe", other.Build()), lists, true),
            kStatusStreamNotFound);
  CompoundFileBuilder withoutJourney;
  withoutJourney.AddStream(kMapProperties, Properties(0x60002, 3, 12));
  EXPECT_EQ(ReadAutoRoute(folder.Put("map.axe", withoutJourney.Build()), lists, true),
            kStatusStreamNotFound);
  // Each attempt has left its route.
  ASSERT_EQ(lists.size(), 7u);
  for (const auto& list : lists) EXPECT_EQ(list->Count(), 0u);
}

TEST(AutoRouteReader, TakesFilesWithShortStreams) {
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(MapFile(12, ""), lists, ContextInPlace()), kStatusSuccess);
  EXPECT_EQ(ParseAutoRoute(MapFile(12, "MASM"), lists, ContextInPlace()), kStatusSuccess);
  CompoundFileBuilder withoutVersion;
  withoutVersion.AddStream("Journey", JourneyOf(1, kFirst.Bytes(41)));
  withoutVersion.AddStream(kMapProperties, "");
  EXPECT_EQ(ParseAutoRoute(withoutVersion.Build(), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(lists[1]->Count(), 0u);
  EXPECT_EQ(lists[2]->Count(), 1u);
}

TEST(MapVersion, IsAnIntegerProperty) {
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 3, 12)), 12);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 3, -5)), -5);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 19, 12)), 0);
  EXPECT_EQ(ReadMapVersion(Properties(0x60002, 0x10003, 12)), 0);
  EXPECT_EQ(ReadMapVersion(Properties(0x60003, 3, 12)), 0);
  // The first of equal ids decides.
  const std::string twice =
      std::string(44, '\0') + Words({48, 40, 2, 0x60002, 24, 0x60002, 32, 2, 7, 3, 12});
  EXPECT_EQ(ReadMapVersion(twice), 0);
}

TEST(MapVersion, IsZeroWhereTheStreamEnds) {
  const std::string properties = Properties(0x60002, 3, 12);
  for (size_t size = 0; size < properties.size(); ++size)
    EXPECT_EQ(ReadMapVersion(properties.substr(0, size)), 0) << size;
  const std::string head(44, '\0');
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, INT32_MAX, 1, 2})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, -1, 0x60002, 16, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({-1, 0, 1, 0x60002, 16, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({48, 0, 1, 0x60002, -8, 3, 12})), 0);
  EXPECT_EQ(ReadMapVersion(head + Words({INT32_MAX, 0, 1})), 0);
}

// A stop of a plain file, with the coordinates longitude, latitude.
std::string PlainStop(int32_t longitude, int32_t latitude, const std::string& name,
                      const std::string& wide) {
  return std::string(32, '\0') + Words({longitude, latitude}) + static_cast<char>(name.size()) +
         name + "\xFF\xFE\xFF" + static_cast<char>(wide.size() / 2) + wide + std::string(20, 't');
}

std::string PlainFile(int32_t count, const std::string& stops) {
  return "hereMASM" + std::string(10, '\0') + Words({count}) + std::string(12, '\0') + stops;
}

TEST(PlainJourney, IsReadWhereThereIsNoCompoundFile) {
  const TemporaryFolder folder;
  const std::string bytes =
      PlainFile(2, PlainStop(0x20000000, -0x10000000, "K\xF6ln", "K\0.\0l\0n\0"s) +
                       PlainStop(1193046, 0x20000000, "", ""));
  PointLists lists;
  ASSERT_EQ(ReadAutoRoute(folder.Put("old.axe", bytes), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 2u);
  // The name keeps its bytes.
  EXPECT_EQ(lists[0]->At(0).name, "K\xF6ln");
  EXPECT_EQ(lists[0]->At(0).longitude, 45.0);
  EXPECT_EQ(lists[0]->At(0).latitude, -22.5);
  EXPECT_EQ(lists[0]->At(1).name, "");
  EXPECT_EQ(lists[0]->At(1).longitude, 0.09999996423721313);
  EXPECT_EQ(lists[0]->At(1).latitude, 45.0);
}

TEST(PlainJourney, IsRefusedWithoutStopsOrMark) {
  PointLists lists;
  EXPECT_EQ(ParseAutoRoute(PlainFile(0, PlainStop(1, 2, "a", "a\0"s)), lists, ContextInPlace()),
            kStatusFailure);
  std::string unmarked = PlainFile(1, PlainStop(1, 2, "a", "a\0"s));
  unmarked[7] = 'm';
  EXPECT_EQ(ParseAutoRoute(unmarked, lists, ContextInPlace()), kStatusFailure);
  EXPECT_EQ(ParseAutoRoute("hereMASM", lists, ContextInPlace()), kStatusFailure);
  EXPECT_EQ(
      ParseAutoRoute("hereMASM" + std::string(10, '\0') + "\x01\x01\x01", lists, ContextInPlace()),
      kStatusFailure);
  ASSERT_EQ(lists.size(), 4u);
  for (const auto& list : lists) EXPECT_EQ(list->Count(), 0u);
}

TEST(PlainJourney, EndsWithTheLastStopThatIsThere) {
  const std::string bytes =
      PlainFile(2, PlainStop(1, 2, "one", "o\0n\0e\0"s) + PlainStop(3, 4, "two", "t\0w\0o\0"s));
  const size_t stopSize = 41 + 3 + 4 + 6 + 20;
  ASSERT_EQ(bytes.size(), 34 + 2 * stopSize);
  for (size_t size = 22; size <= bytes.size(); ++size) {
    ConversionContext context;
    const ConversionScope scope(context);
    CGpsRoute route;
    EXPECT_EQ(ParsePlainJourney(bytes.substr(0, size), route, ContextInPlace()), kStatusSuccess);
    const size_t expected = size < 34 + 44 ? 0 : size < 34 + stopSize + 44 ? 1 : 2;
    EXPECT_EQ(route.Count(), expected) << size;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), expected == 2 ? 0u : 1u);
  }
  CGpsRoute route;
  EXPECT_EQ(
      ParsePlainJourney(PlainFile(INT32_MAX, PlainStop(1, 2, "a", "")), route, ContextInPlace()),
      kStatusSuccess);
  EXPECT_EQ(route.Count(), 1u);
  EXPECT_EQ(ParsePlainJourney(PlainFile(-1, PlainStop(1, 2, "a", "")), route, ContextInPlace()),
            kStatusSuccess);
  EXPECT_EQ(route.Count(), 1u);
}

TEST(AutoRouteReader, ReadsTheExample) {
  PointLists lists;
  ASSERT_EQ(ReadAutoRoute(WidePath(CORVANE_SOURCE_FOLDER "/examples/trieste_to_thessaloniki.axe"),
                          lists, true),
            kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 7u);
  EXPECT_EQ(lists[0]->At(0).name, "Trieste, Piazza Unit\u00e0 d'Italia");
  EXPECT_NEAR(lists[0]->At(0).latitude, 45.6496, 4e-6);
  EXPECT_NEAR(lists[0]->At(0).longitude, 13.7681, 1e-6);
  EXPECT_EQ(lists[0]->At(5).name,
            "\u0421\u043a\u043e\u043f\u0458\u0435, \u041a\u0430\u043c\u0435\u043d "
            "\u043c\u043e\u0441\u0442");
  EXPECT_NEAR(lists[0]->At(6).latitude, 40.6264, 4e-6);
}

}  // namespace
