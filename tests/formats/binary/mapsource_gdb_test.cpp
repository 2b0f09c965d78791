#include "formats/binary/mapsource_gdb.h"

#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/binary/mapsource_mps.h"
#include "platform/path_text.h"
#include "tests/formats/binary/mapsource_bytes.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace mapsource;
using namespace mapsource::gdb;

// ---- Pieces of files, byte by byte ----

std::string Head() {
  return Text("MsRcf") + Hex("02 00 00 00") + "D" + Hex("6C 00") +  // version "l"
         Hex("28 00 00 00") + "A" + Hex("5D 02") + Text("Corvane Map 1.21") + Text("Sep 21 2020") +
         Text("14:30:32") + Text("MapSource");
}

std::string End() { return Hex("02 00 00 00") + "V" + Hex("00 01"); }

// 31 bytes, the first of them an empty comment.
std::string WaypointTail() { return Hex("00 00 01") + Repeat(7, 0) + Hex("12") + Repeat(20, 0); }

std::string Bytes(const CGpsPointArray& list) { return BytesOf(WriteGdbBody, list); }

uint32_t Parse(const std::string& bytes, PointLists& lists) {
  return ParseGdbBuffer(bytes.data(), bytes.size(), lists);
}

// ---- Writer ----

TEST(GdbWriter, WritesOnePointWithoutAltitude) {
  const std::string place = Hex(kNorth45) + Hex(kEast90) + Hex("00");
  const std::string corner = Hex(kNorth45) + Hex(kEast90) + Hex("01") + Hex(kAltitude0);
  EXPECT_EQ(Bytes(MakeList("Trip", MakePoint(45, 90, "Home", "lost"))),
            Head() +
                // 4 + 68 = 72
                Hex("48 00 00 00") + "W" + Text("Home") + Hex("08 00 00 00") + Subclass() + place +
                WaypointTail() +
                // 4 + 42 + 4 + 60 = 110
                Hex("6E 00 00 00") + "R" + Text("Trip") + Hex("00 00") + corner + corner +
                Hex("01 00 00 00") + Text("Home") + Hex("00 00 00 00") + Subclass() +
                RoutePointMiddle() + Hex("00 00 00 00") + Hex("01") + Repeat(8, 0xFF) + Hex("00") +
                End());
}

TEST(GdbWriter, WritesLinksAndBoxesOfPointsWithAltitude) {
  const std::string a = Hex(kNorth45) + Hex(kWest22) + Hex("01") + Hex(kAltitude100);
  const std::string b = Hex(kSouth45) + Hex(kEast90) + Hex("01") + Hex("00 00 00 00 00 00 00 C0");
  const std::string highest = Hex(kNorth45) + Hex(kEast90) + Hex("01") + Hex(kAltitude100);
  const std::string lowest =
      Hex(kSouth45) + Hex(kWest22) + Hex("01") + Hex("00 00 00 00 00 00 00 C0");
  EXPECT_EQ(
      Bytes(MakeList("", MakePoint(45, -22.5, "A", "", 100), MakePoint(-45, 90, "Bb", "", -2))),
      Head() +
          // Southern point first; 2 + 68 + 8 = 78 and 1 + 68 + 8 = 77.
          Hex("4E 00 00 00") + "W" + Text("Bb") + Hex("08 00 00 00") + Subclass() + b +
          WaypointTail() + Hex("4D 00 00 00") + "W" + Text("A") + Hex("08 00 00 00") + Subclass() +
          a + WaypointTail() +
          // 0 + 42 + 1 + 60 + 2 + 112 + 16 = 233
          Hex("E9 00 00 00") + "R" + Text("") + Hex("00 00") + highest + lowest +
          Hex("02 00 00 00") +
          // The first stop with its link and box ...
          Text("A") + Hex("00 00 00 00") + Subclass() + RoutePointMiddle() + Hex("02 00 00 00") +
          a + b + Hex("00") + highest + lowest + Repeat(8, 0xFF) +
          // ... and the last one.
          Text("Bb") + Hex("00 00 00 00") + Subclass() + RoutePointMiddle() + Hex("00 00 00 00") +
          Hex("01") + Repeat(8, 0xFF) + Hex("00") + End());
}

TEST(GdbWriter, LinksWithoutAltitudeAreNineBytesLong) {
  const std::string a = Hex(kNorth45) + Hex(kEast90) + Hex("00");
  const std::string b = Hex(kNorth11) + Hex(kEast90) + Hex("00");
  const std::string bytes = Bytes(MakeList("", MakePoint(45, 90, "A"), MakePoint(11.25, 90, "B")));
  EXPECT_NE(bytes.find(Hex("02 00 00 00") + a + b + Hex("00") + Hex(kNorth45) + Hex(kEast90) +
                       Hex("01") + Hex(kAltitude0) + Hex(kNorth11) + Hex(kEast90) + Hex("01") +
                       Hex(kAltitude0) + Repeat(8, 0xFF)),
            std::string::npos);
}

TEST(GdbWriter, RecordIsEightBytesShorterWithoutAltitude) {
  const std::string without = Bytes(MakeList("", MakePoint(45, 90, "A")));
  const std::string with = Bytes(MakeList("", MakePoint(45, 90, "A", "", 0.5)));
  EXPECT_NE(without.find(Hex("45 00 00 00") + "W" + Text("A")), std::string::npos);  // 69
  EXPECT_NE(with.find(Hex("4D 00 00 00") + "W" + Text("A")), std::string::npos);     // 77
  EXPECT_EQ(with.size(), without.size() + 8);
}

TEST(GdbWriter, RouteLengthFollowsItsRuleWithMixedAltitudes) {
  // By rule 0 + 42 + 60 + 1 + 112 + 16 + 1 + 112 + 1 = 345; what follows is 8 bytes shorter, since
  // the first link has one altitude and the second has one.
  const std::string low =
      Bytes(MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b", "", 7), MakePoint(3, 3, "c")));
  const size_t lowRoute = low.find(Hex("59 01 00 00") + "R");
  ASSERT_NE(lowRoute, std::string::npos);
  EXPECT_EQ(low.size() - lowRoute - 5 - End().size(), 345u);

  // 42 + 60 + 1 + 112 + 1 + 112 + 1 = 329 by rule; the first link has one altitude more.
  const std::string first =
      Bytes(MakeList("", MakePoint(1, 1, "a", "", 7), MakePoint(2, 2, "b"), MakePoint(3, 3, "c")));
  const size_t firstRoute = first.find(Hex("49 01 00 00") + "R");
  ASSERT_NE(firstRoute, std::string::npos);
  EXPECT_EQ(first.size() - firstRoute - 5 - End().size(), 329u + 8u);

  // 345 by rule, and only the second link has an altitude, one.
  const std::string last =
      Bytes(MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b"), MakePoint(3, 3, "c", "", 7)));
  const size_t lastRoute = last.find(Hex("59 01 00 00") + "R");
  ASSERT_NE(lastRoute, std::string::npos);
  EXPECT_EQ(last.size() - lastRoute - 5 - End().size(), 345u - 8u);
}

TEST(GdbWriter, EmptyListHasNeitherWaypointsNorRoute) {
  EXPECT_EQ(Bytes(CGpsRoute()), Head() + Hex("00") + End());
}

TEST(GdbWriter, IgnoresTheSplitLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b"));
  EXPECT_EQ(WriteGdb(folder.WidePathTo("a.gdb"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.gdb"), Bytes(route));
}

TEST(GdbWriter, GivesZeroForAFileThatCannotBeCreated) {
  const TemporaryFolder folder;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(WriteGdb(folder.WidePathTo("missing/a.gdb"), CGpsRoute(), 0, true), kStatusSuccess);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_EQ(context.failure.platformError, kStatusFileNotFound);
}

// ---- Reader: records ----

TEST(GdbReader, ReadsFreeWaypointsWithTheirComments) {
  const std::string bytes =
      HeadOfVersion('l') + Waypoint("Home", 0, Place(kNorth45, kEast90), "x") +
      Waypoint("Peak", 0, Place(kSouth45, kWest22, kAltitude100), "Caf\xE9") + End();
  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindWaypoints);
  ASSERT_EQ(lists[0]->Count(), 2u);
  const CGpsPoint& home = lists[0]->points[0];
  EXPECT_EQ(home.latitude, 45.0);
  EXPECT_EQ(home.longitude, 90.0);
  EXPECT_EQ(home.altitude, 0.0);
  EXPECT_EQ(home.name, "Home");
  EXPECT_EQ(home.comment, "x");
  const CGpsPoint& peak = lists[0]->points[1];
  EXPECT_EQ(peak.latitude, -45.0);
  EXPECT_EQ(peak.longitude, -22.5);
  EXPECT_EQ(peak.altitude, 100.0);
  EXPECT_EQ(peak.comment, "Caf\u00e9");
}

TEST(GdbReader, WaypointsOfOtherClassesAreLostWithoutARoute) {
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + Waypoint("A", 8, Place(kNorth45, kEast90)) +
                      Waypoint("B", -1, Place(kNorth45, kEast90)),
                  lists),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(GdbReader, RouteTakesThePoolOnlyAndTheFirstOfAName) {
  const std::string bytes =
      HeadOfVersion('l') + Waypoint("Free", 0, Place(kNorth45, kEast90)) +
      Waypoint("A", 8, Place(kNorth45, kEast90, kAltitude100), "first") +
      Waypoint("A", 8, Place(kSouth45, kEast90), "second") +
      Waypoint("B", 4, Place(kNorth11, kEast90)) +
      Record('R', RouteHead("Tour", 5) + LastStop("B", 2) + LastStop("Free", 2) + LastStop("A", 2) +
                      LastStop("b", 2) + LastStop("A", 2));
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(NamesOf(*lists[0]), "Free;");
  EXPECT_EQ(lists[1]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[1]->name, "Tour");
  EXPECT_EQ(NamesOf(*lists[1]), "B;A;A;");
  EXPECT_EQ(lists[1]->points[1].latitude, 45.0);
  EXPECT_EQ(lists[1]->points[1].altitude, 100.0);
  EXPECT_EQ(lists[1]->points[1].comment, "first");
  EXPECT_EQ(lists[1]->points[2].comment, "first");
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 2u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
}

TEST(GdbReader, RouteBeforeItsWaypointsFindsNoStops) {
  const std::string waypoint = Waypoint("A", 8, Place(kNorth45, kEast90));
  const std::string route = Record('R', RouteHead("", 1) + LastStop("A", 2));
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + route + waypoint, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[1]->Count(), 0u);

  // Waypoints between routes are there for the routes behind them.
  lists.clear();
  EXPECT_EQ(Parse(HeadOfVersion('l') + route + waypoint + route, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(lists[1]->Count(), 0u);
  EXPECT_EQ(lists[2]->Count(), 1u);
}

TEST(GdbReader, PassesOverEverythingElseInARoutePoint) {
  const std::string place = Place(kNorth45, kEast90);
  const std::string high = Place(kNorth45, kEast90, kAltitude100);
  const std::string stop = Text("A") + Int32(0) + Text("DE") + Repeat(22, 0xAB);
  struct {
    char letter;
    std::string longer;  // what stands behind a first byte that is not 0
    size_t tail;
  } const versions[] = {{'k', Repeat(8, 0xCC), 0},
                        {'l', Repeat(8, 0xCC), 8},
                        {'m', Repeat(16, 0xCC), 10},
                        {'n', Repeat(16, 0xCC), 10}};
  for (const auto& version : versions) {
    const std::string withBox = Hex("00") + high + place + Repeat(version.tail, 0xEE);
    const std::string route =
        Text("Tour") + Hex("05 00") + high + place + Int32(4) +
        // short, three links, box
        stop + Hex("00") + Repeat(18, 0xAA) + Int32(3) + place + high + place + withBox +
        // long, no link, box
        stop + Hex("07") + version.longer + Repeat(18, 0xAA) + Int32(0) + withBox +
        // a number of links below zero, last and yet followed by another
        stop + Hex("00") + Repeat(18, 0xAA) + Int32(-1) + Hex("01") + Repeat(version.tail, 0xEE) +
        // short, one link, last
        Text("B") + Int32(0) + Text("") + Repeat(22, 0xAB) + Hex("00") + Repeat(18, 0xAA) +
        Int32(1) + high + Hex("02") + Repeat(version.tail, 0xEE);
    const std::string bytes = HeadOfVersion(version.letter) + Waypoint("A", 8, place) +
                              Waypoint("B", 8, high) + Record('R', route) +
                              Waypoint("C", 0, place) + End();
    PointLists lists;
    ConversionContext context;
    const ConversionScope scope(context);
    EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_EQ(NamesOf(*lists[1]), "A;A;A;B;") << version.letter;
    EXPECT_EQ(NamesOf(*lists[0]), "C;") << version.letter;
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
    EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 0u);
  }
}

TEST(GdbReader, BoxOfTheRouteHasAnAltitudeWhereItsFlagIsSet) {
  const std::string pool = HeadOfVersion('l') + Waypoint("A", 8, Place(kNorth45, kEast90));
  const std::string box = Place(kNorth45, kEast90) + Place(kSouth45, kEast90, kAltitude100);
  PointLists lists;
  EXPECT_EQ(
      Parse(pool + Record('R', Text("") + Hex("00 00") + box + Int32(1) + LastStop("A", 2)), lists),
      kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[1]), "A;");
}

TEST(GdbReader, ReadsTracks) {
  const std::string plain = Hex("00 00 00");
  const std::string bytes =
      HeadOfVersion('l') +
      Record('T', Text("Ride") + Hex("00 01 02 03 04") + Int32(5) + Place(kNorth45, kEast90) +
                      plain + Place(kSouth45, kWest22, kAltitude100) + Hex("01 AA AA AA AA") +
                      Hex("00 00") + Place(kNorth11, kEast90) + Hex("00 01") + Repeat(8, 0xBB) +
                      Hex("00") + Place(kNorth45, kWest22) + Hex("00 00 FF") + Repeat(8, 0xCC) +
                      Place(kSouth45, kEast90) + Hex("01 AA AA AA AA 01") + Repeat(8, 0xBB) +
                      Hex("01") + Repeat(8, 0xCC)) +
      Record('T', Text("Empty") + Hex("00 00 00 00 00") + Int32(0)) +
      Waypoint("W", 0, Place(kNorth45, kEast90));
  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 3u);
  EXPECT_EQ(NamesOf(*lists[0]), "W;");
  EXPECT_EQ(lists[1]->GetKind(), kKindTrack);
  EXPECT_EQ(lists[1]->name, "Ride");
  ASSERT_EQ(lists[1]->Count(), 5u);
  EXPECT_EQ(lists[1]->points[0].latitude, 45.0);
  EXPECT_EQ(lists[1]->points[0].altitude, 0.0);
  EXPECT_EQ(lists[1]->points[1].longitude, -22.5);
  EXPECT_EQ(lists[1]->points[1].altitude, 100.0);
  EXPECT_EQ(lists[1]->points[2].latitude, 11.25);
  EXPECT_EQ(lists[1]->points[3].longitude, -22.5);
  EXPECT_EQ(lists[1]->points[4].latitude, -45.0);
  EXPECT_EQ(lists[1]->points[4].name, "");
  EXPECT_EQ(lists[2]->name, "Empty");
  EXPECT_EQ(lists[2]->Count(), 0u);
}

TEST(GdbReader, PassesOverUnknownRecordsByTheirLength) {
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + Record('M', Repeat(300, 'W')) + Record('w', "") +
                      Waypoint("A", 0, Place(kNorth45, kEast90)),
                  lists),
            kStatusSuccess);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
}

TEST(GdbReader, TextIsUtf8FromVersionThreeOn) {
  const std::string place = Place(kNorth45, kEast90);
  for (const char letter : {'j', 'k', 'l', 'm', 'n'}) {
    const int version = letter - 'j';
    const std::string bytes =
        HeadOfVersion(letter) + Waypoint("Caf\xC3\xA9", 0, place, "\xC3\xA9") +
        Waypoint("\xC3\xA9", 8, place) +
        Record('R', RouteHead("\xC3\xA9", 1) + LastStop("\xC3\xA9", version)) +
        Record('T', Text("\xC3\xA9") + Repeat(5, 0) + Int32(0));
    PointLists lists;
    EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 3u);
    const std::string e = version < 3 ? "\u00c3\u00a9" : "\u00e9";
    EXPECT_EQ(lists[0]->points[0].name, "Caf" + e) << letter;
    EXPECT_EQ(lists[0]->points[0].comment, e) << letter;
    EXPECT_EQ(lists[1]->name, e) << letter;
    EXPECT_EQ(NamesOf(*lists[1]), e + ";") << letter;
    EXPECT_EQ(lists[2]->name, e) << letter;
  }
}

TEST(GdbReader, ReplacesBytesThatAreNoUtf8) {
  // Stops are found by the bytes of the file all the same.
  const std::string place = Place(kNorth45, kEast90);
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('m') + Waypoint("Caf\xE9", 8, place, "\xC3\xA9\x80") +
                      Waypoint("Caf\xE8", 8, Place(kSouth45, kEast90)) +
                      Record('R', RouteHead("\xFFx", 2) + LastStop("Caf\xE8", 3) +
                                      LastStop("Caf\xE9", 3)),
                  lists),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[1]->name, "\uFFFDx");
  EXPECT_EQ(NamesOf(*lists[1]), "Caf\uFFFD;Caf\uFFFD;");
  EXPECT_EQ(lists[1]->points[0].latitude, -45.0);
  EXPECT_EQ(lists[1]->points[1].latitude, 45.0);
  EXPECT_EQ(lists[1]->points[1].comment, "\u00e9\uFFFD");
}

TEST(GdbReader, AnyFlagButZeroStandsForAnAltitude) {
  const std::string flagged = Hex(kNorth45) + Hex(kEast90) + Hex("80") + Hex(kAltitude100);
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('l') + Waypoint("A", 0, flagged, "note"), lists), kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].altitude, 100.0);
  EXPECT_EQ(lists[0]->points[0].comment, "note");
}

TEST(GdbReader, GoesOnBehindTheProgramsName) {
  const std::string start = Text("MsRcf") + Record('D', Hex("6C 00")) + Record('A', Hex("5D 02"));
  const std::string waypoint = Waypoint("A", 0, Place(kNorth45, kEast90));
  for (const std::string& program :
       {Text("MapSource"), Text("BaseCamp"), std::string("TenLetters"), Repeat(10, 0)}) {
    PointLists lists;
    EXPECT_EQ(Parse(start + program + waypoint, lists), kStatusSuccess);
    EXPECT_EQ(NamesOf(*lists[0]), "A;") << program;
  }
}

TEST(GdbReader, CoordinatesHaveSinglePrecision) {
  const std::string bytes = Bytes(MakeList("", MakePoint(48.85661, 2.35222, "Paris")));
  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  ASSERT_EQ(lists[1]->Count(), 1u);
  EXPECT_EQ(lists[1]->points[0].latitude, static_cast<double>(48.85661f));
  EXPECT_NE(lists[1]->points[0].latitude, 48.85661);
  EXPECT_EQ(lists[1]->points[0].longitude, static_cast<double>(2.35222f));
}

TEST(GdbReader, RoundsUnitsToSinglePrecisionOnce) {
  // 0x7FFFFFFF units are 179.99999991618097 degrees, nearest to 180 in single precision.
  PointLists lists;
  EXPECT_EQ(
      Parse(HeadOfVersion('l') + Waypoint("A", 0, Place("FF FF FF 7F", "00 00 00 80")), lists),
      kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].latitude, 180.0);
  EXPECT_EQ(lists[0]->points[0].longitude, -180.0);
}

// ---- Reader: whole files ----

TEST(GdbReader, GivesTheSystemsErrorForAMissingFileAndOneForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadGdb(folder.WidePathTo("none.gdb"), lists, true), kStatusFileNotFound);
  EXPECT_EQ(ReadGdb(folder.WidePathTo("."), lists, true), kStatusAccessDenied);
  EXPECT_EQ(ReadGdb(folder.Put("empty.gdb", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadGdb(folder.Put("a.gdb", "M"), lists, true), kStatusInvalidArgument);
  EXPECT_TRUE(lists.empty());
}

TEST(GdbReader, RefusesAnotherMagic) {
  PointLists lists;
  EXPECT_EQ(Parse("", lists), 0x80070057u);
  EXPECT_EQ(Parse("MsRcf", lists), 0x80070057u);
  EXPECT_EQ(Parse("MsRcfx", lists), 0x80070057u);
  EXPECT_EQ(Parse(Text("MsRcd") + Record('D', Hex("69 00")), lists), 0x80070057u);
  EXPECT_EQ(ParseGdbBuffer(nullptr, 0, lists), 0x80070057u);
  EXPECT_TRUE(lists.empty());
  EXPECT_EQ(Parse(Text("MsRcf"), lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(GdbReader, FileOfAnEmptyListLosesTheFrameAndEnds) {
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(Bytes(CGpsRoute()), lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
}

TEST(GdbReader, ReadsRoutesWhoseLengthIsOffByAnAltitude) {
  for (const double first : {0.0, 7.0}) {
    for (const double last : {0.0, 7.0}) {
      const auto route = MakeList("Tour", MakePoint(1, 1, "a", "", first),
                                  MakePoint(2, 2, "b", "", 3), MakePoint(3, 3, "c", "", last));
      PointLists lists;
      ConversionContext context;
      const ConversionScope scope(context);
      EXPECT_EQ(Parse(Bytes(route), lists), kStatusSuccess);
      ASSERT_EQ(lists.size(), 2u);
      EXPECT_EQ(NamesOf(*lists[1]), "a;b;c;");
      EXPECT_EQ(lists[1]->points[0].altitude, first);
      EXPECT_EQ(lists[1]->points[2].altitude, last);
      EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u) << first << last;
    }
  }
}

// ---- Both ----

TEST(Gdb, RoundTripKeepsOrderAndNames) {
  const TemporaryFolder folder;
  const auto route =
      MakeList("Tour d'\u00e9t\u00e9", MakePoint(48.85661, 2.35222, "Paris", "lost", 35),
               MakePoint(43.29648, 5.36978, "Marseille"),
               MakePoint(45.76404, 4.83566, "Lyon \u00e9", "", 173),
               MakePoint(-33.92487, 18.42406, "Cape Town"));
  EXPECT_EQ(WriteGdb(folder.WidePathTo("a.gdb"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadGdb(folder.WidePathTo("a.gdb"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(lists[1]->name, route.name);
  ASSERT_EQ(lists[1]->Count(), 4u);
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(lists[1]->points[i].name, route.points[i].name);
    EXPECT_TRUE(lists[1]->points[i].IsNear(route.points[i]));
    EXPECT_EQ(lists[1]->points[i].altitude, route.points[i].altitude);
    EXPECT_EQ(lists[1]->points[i].comment, "");
  }
}

TEST(Gdb, StopsOfOneNameBecomeTheFirstInTheFile) {
  // Both waypoints are written, the southern one first.
  const std::string bytes = Bytes(MakeList("", MakePoint(45, 90, "A"), MakePoint(-45, 90, "A")));
  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists[1]->Count(), 2u);
  EXPECT_EQ(lists[1]->points[0].latitude, -45.0);
  EXPECT_EQ(lists[1]->points[1].latitude, -45.0);
  EXPECT_NE(bytes.find(Place(kNorth45, kEast90) + WaypointTail()), std::string::npos);
}

TEST(Gdb, IsNotTakenForTheOlderFormat) {
  PointLists lists;
  const std::string bytes = Bytes(MakeList("", MakePoint(45, 90, "A")));
  EXPECT_EQ(ParseMpsBuffer(bytes.data(), bytes.size(), lists), kStatusInvalidArgument);
  EXPECT_TRUE(lists.empty());
}

TEST(Gdb, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadGdb(WidePath(CORVANE_SOURCE_FOLDER "/examples/swiss-passes.gdb"), lists, true),
            kStatusSuccess);
  const CGpsPointArray& route = *lists.back();
  EXPECT_EQ(route.GetKind(), kKindRoute);
  ASSERT_EQ(route.Count(), 8u);
  EXPECT_EQ(route.points.front().name, "Chur");
  EXPECT_EQ(route.points.back().name, "Bern");
  EXPECT_EQ(route.name, "Swiss passes");
  EXPECT_TRUE(route.points[3].IsNear(MakePoint(46.5726, 8.4151)));
  EXPECT_EQ(route.points[3].altitude, 2429.0);
}

}  // namespace
