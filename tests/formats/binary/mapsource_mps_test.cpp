#include "formats/binary/mapsource_mps.h"

#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "platform/path_text.h"
#include "tests/formats/binary/mapsource_bytes.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using namespace mapsource;

// ---- Pieces of files, byte by byte ----

std::string Head() {
  return Text("MsRcd") + Hex("02 00 00 00") + "D" + Hex("69 00") +  // version "i"
         Hex("1B 00 00 00") + "A" + Hex("F4 01") + Text("SQA") + Text("Jul  3 2003") +
         Text("08:35:33");
}

std::string End() { return Hex("02 00 00 00") + "V" + Hex("00 01"); }

std::string HeadOfVersion(char letter) {
  return Text("MsRcd") + Record('D', std::string{letter, '\0'}) + Record('A', Hex("F4 01"));
}

std::string Place(std::string_view latitude, std::string_view longitude, std::string_view flag,
                  std::string_view altitude) {
  return Hex(latitude) + Hex(longitude) + Hex(flag) + Hex(altitude);
}

const std::string kHere = Place(kNorth45, kEast90, "00", kAltitude0);

// 42 bytes, the first of them an empty comment.
std::string WaypointTail() {
  return Repeat(10, 0) + Hex("01") + Repeat(7, 0) + Hex("12") + Repeat(23, 0);
}

// Bytes behind the country text in the version of this letter.
size_t SubclassSize(char letter) { return letter == 'd' ? 17 : 22; }

std::string Waypoint(std::string_view name, int32_t waypointClass, const std::string& place,
                     std::string_view comment = "", char letter = 'i') {
  return Record('W', Text(name) + Int32(waypointClass) + Text("FR") +
                         Repeat(SubclassSize(letter), 0xAB) + place + Text(comment) + "more");
}

// What stands between subclass and links: 19 bytes.
std::string RoutePointMiddle() { return Hex("00 03 00 00 00") + Repeat(14, 0); }

std::string StopStart(std::string_view name, char letter = 'i', std::string_view more = "") {
  return Text(name) + Int32(8) + Text("FR") + Repeat(SubclassSize(letter), 0xAB) +
         (letter == 'd' ? "" : Text(more)) + Repeat(18, 0xAA);
}

std::string LastStop(std::string_view name, char letter = 'i') {
  return StopStart(name, letter) + Int32(0) + Hex("01");
}

std::string Bytes(const CGpsPointArray& list) { return BytesOf(WriteMpsBody, list); }

uint32_t Parse(const std::string& bytes, PointLists& lists) {
  return ParseMpsBuffer(bytes.data(), bytes.size(), lists);
}

// ---- Writer ----

TEST(MpsWriter, WritesOnePointWithoutAltitude) {
  EXPECT_EQ(Bytes(MakeList("Trip", MakePoint(45, 90, "Home", "lost"))),
            Head() +
                // 4 + 87 = 91
                Hex("5B 00 00 00") + "W" + Text("Home") + Hex("08 00 00 00") + Subclass() + kHere +
                WaypointTail() +
                // 4 + 41 + 4 + 52 = 101
                Hex("65 00 00 00") + "R" + Text("Trip") + Hex("00 00") + kHere + kHere +
                Hex("01 00 00 00") + Text("Home") + Hex("08 00 00 00") + Subclass() +
                RoutePointMiddle() + Hex("00 00 00 00") + Hex("01") + End());
}

TEST(MpsWriter, WritesLinksAndBoxes) {
  const std::string a = Place(kNorth45, kWest22, "01", kAltitude100);
  const std::string b = Place(kSouth45, kEast90, "00", kAltitude0);
  const std::string highest = Place(kNorth45, kEast90, "01", kAltitude100);
  const std::string lowest = Place(kSouth45, kWest22, "00", kAltitude0);
  EXPECT_EQ(Bytes(MakeList("", MakePoint(45, -22.5, "A", "", 100), MakePoint(-45, 90, "Bb"))),
            Head() +
                // Southern point first; 2 + 87 = 89 and 1 + 87 = 88, with an altitude or without.
                Hex("59 00 00 00") + "W" + Text("Bb") + Hex("08 00 00 00") + Subclass() + b +
                WaypointTail() + Hex("58 00 00 00") + "W" + Text("A") + Hex("08 00 00 00") +
                Subclass() + a + WaypointTail() +
                // 0 + 41 + 1 + 52 + 2 + 120 = 216
                Hex("D8 00 00 00") + "R" + Text("") + Hex("00 00") + highest + lowest +
                Hex("02 00 00 00") +
                // The first stop with its link and box ...
                Text("A") + Hex("08 00 00 00") + Subclass() + RoutePointMiddle() +
                Hex("02 00 00 00") + a + b + Hex("00") + highest + lowest +
                // ... and the last one.
                Text("Bb") + Hex("08 00 00 00") + Subclass() + RoutePointMiddle() +
                Hex("00 00 00 00") + Hex("01") + End());
}

TEST(MpsWriter, RouteLengthIsTheTrueOne) {
  const std::string bytes =
      Bytes(MakeList("Name", MakePoint(1, 1, "a"), MakePoint(2, 2, "bb", "", 5),
                     MakePoint(3, 3, "ccc"), MakePoint(-4, -4, "", "", -1)));
  // 4 + 41 + 52 + 1 + 120 + 2 + 120 + 3 + 120 + 0 = 463
  const size_t route = bytes.find(Hex("CF 01 00 00") + "R");
  ASSERT_NE(route, std::string::npos);
  EXPECT_EQ(bytes.size() - route - 5 - End().size(), 463u);
}

TEST(MpsWriter, NarrowsNamesAndCountsTheirBytes) {
  const std::string bytes = Bytes(MakeList(
      "\u0141\u00f3d\u017a", MakePoint(1, 1, "Caf\u00e9, \"x\""), MakePoint(2, 2, "\U0001F600|=")));
  EXPECT_NE(bytes.find(Hex("60 00 00 00") + "W" + Text("Caf\xE9, \"x\"") + Int32(8)),
            std::string::npos);  // 9 + 87 = 96
  EXPECT_NE(bytes.find(Hex("5B 00 00 00") + "W" + Text("??|=") + Int32(8)), std::string::npos);
  // 4 + 41 + 9 + 52 + 4 + 120 = 230
  EXPECT_NE(bytes.find(Hex("E6 00 00 00") + "R" +
                       Text("?\xF3"
                            "d?")),
            std::string::npos);
}

TEST(MpsWriter, EmptyListHasNeitherWaypointsNorRoute) {
  EXPECT_EQ(Bytes(CGpsRoute()), Head() + End());
}

TEST(MpsWriter, IgnoresTheSplitLimit) {
  const TemporaryFolder folder;
  const auto route = MakeList("", MakePoint(1, 1, "a"), MakePoint(2, 2, "b"));
  EXPECT_EQ(WriteMps(folder.WidePathTo("a.mps"), route, 1, true), kStatusSuccess);
  EXPECT_EQ(folder.Get("a.mps"), Bytes(route));
}

TEST(MpsWriter, GivesZeroForAFileThatCannotBeCreated) {
  const TemporaryFolder folder;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(WriteMps(folder.WidePathTo("missing/a.mps"), CGpsRoute(), 0, true), kStatusSuccess);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_EQ(context.failure.platformError, kStatusFileNotFound);
}

// ---- Reader: versions ----

TEST(MpsReader, KnowsTheVersionsDToI) {
  for (int letter = 0; letter < 256; ++letter) {
    PointLists lists;
    const uint32_t status =
        Parse(Text("MsRcd") + Record('D', std::string{static_cast<char>(letter), '\0'}), lists);
    EXPECT_EQ(status, letter >= 'd' && letter <= 'i' ? 0u : 0x80004001u) << letter;
  }
}

TEST(MpsReader, EndsAtTheRecordOfAVersionItDoesNotKnow) {
  PointLists lists;
  EXPECT_EQ(Parse(HeadOfVersion('i') + Waypoint("A", 0, kHere) + Record('D', Hex("6A 00")) +
                      Waypoint("B", 0, kHere),
                  lists),
            0x80004001u);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
}

TEST(MpsReader, ReadsEveryVersionsPointsAndRoutes) {
  const std::string box = Place(kNorth45, kEast90, "01", kAltitude100) + kHere;
  for (const char letter : {'d', 'e', 'f', 'g', 'h', 'i'}) {
    const std::string stops = StopStart("A", letter, "text of its own") + Int32(2) + kHere + kHere +
                              Hex("00") + box +                                      // with a box
                              StopStart("B", letter) + Int32(0) + Hex("00") + box +  // no link
                              StopStart("A", letter, "x") + Int32(1) + kHere + Hex("01") +
                              LastStop("B", letter);
    const std::string bytes = HeadOfVersion(letter) + Waypoint("Free", 0, kHere, "note", letter) +
                              Waypoint("A", 8, kHere, "first", letter) +
                              Waypoint("B", 1, kHere, "", letter) +
                              Record('R', Text("Tour") + Hex("07 00") + box + Int32(4) + stops) +
                              Waypoint("Behind", 0, kHere, "", letter) + End();
    PointLists lists;
    ConversionContext context;
    const ConversionScope scope(context);
    EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u) << letter;
    EXPECT_EQ(NamesOf(*lists[0]), "Free;Behind;") << letter;
    EXPECT_EQ(lists[0]->points[0].comment, "note");
    EXPECT_EQ(lists[0]->points[0].latitude, 45.0);
    EXPECT_EQ(lists[0]->points[0].longitude, 90.0);
    EXPECT_EQ(lists[1]->name, "Tour");
    EXPECT_EQ(NamesOf(*lists[1]), "A;B;A;B;") << letter;
    EXPECT_EQ(lists[1]->points[2].comment, "first");
    EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
    EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 0u);
  }
}

// ---- Reader: records ----

TEST(MpsReader, AltitudeCountsOnlyWithItsFlag) {
  PointLists lists;
  EXPECT_EQ(
      Parse(HeadOfVersion('i') + Waypoint("A", 0, Place(kNorth45, kEast90, "01", kAltitude100)) +
                Waypoint("B", 0, Place(kNorth45, kEast90, "00", kAltitude100), "note"),
            lists),
      kStatusSuccess);
  ASSERT_EQ(lists[0]->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].altitude, 100.0);
  EXPECT_EQ(lists[0]->points[1].altitude, 0.0);
  EXPECT_EQ(lists[0]->points[1].comment, "note");
}

TEST(MpsReader, ReadsTracksOf31BytesAPoint) {
  const std::string bytes =
      HeadOfVersion('i') +
      Record('T', Text("Ride") + Hex("00 01 02 03 04") + Int32(2) +
                      Place(kNorth11, kWest22, "01", kAltitude100) + Repeat(14, 0xFF) +
                      Place(kSouth45, kEast90, "00", kAltitude100) + Repeat(14, 0xFF)) +
      Waypoint("A", 0, kHere);
  PointLists lists;
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(NamesOf(*lists[0]), "A;");
  EXPECT_EQ(lists[1]->GetKind(), kKindTrack);
  EXPECT_EQ(lists[1]->name, "Ride");
  ASSERT_EQ(lists[1]->Count(), 2u);
  EXPECT_EQ(lists[1]->points[0].latitude, 11.25);
  EXPECT_EQ(lists[1]->points[0].longitude, -22.5);
  EXPECT_EQ(lists[1]->points[0].altitude, 100.0);
  EXPECT_EQ(lists[1]->points[1].latitude, -45.0);
  EXPECT_EQ(lists[1]->points[1].altitude, 0.0);
}

TEST(MpsReader, TextIsAlwaysWidened) {
  for (const char letter : {'d', 'i'}) {
    PointLists lists;
    EXPECT_EQ(Parse(HeadOfVersion(letter) + Waypoint("\xC3\xA9", 0, kHere, "\xE9", letter), lists),
              kStatusSuccess);
    EXPECT_EQ(lists[0]->points[0].name, "\u00c3\u00a9");
    EXPECT_EQ(lists[0]->points[0].comment, "\u00e9");
  }
}

TEST(MpsReader, NothingStandsBehindTheApplicationRecord) {
  // Read as the newer format does, these ten bytes would be passed over.
  PointLists lists;
  EXPECT_EQ(Parse(Text("MsRcd") + Record('D', Hex("69 00")) + Record('A', Hex("F4 01")) +
                      Record('?', Repeat(4, 'x')) + Hex("00") + Waypoint("A", 0, kHere),
                  lists),
            kStatusSuccess);
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(MpsReader, FreeWaypointsAreNoStops) {
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(HeadOfVersion('i') + Waypoint("A", 0, kHere) +
                      Record('R', RouteHead("", 1) + LastStop("A")),
                  lists),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[1]->Count(), 0u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kStopWithoutWaypoint), 1u);
}

// ---- Reader: files that are not whole ----

TEST(MpsReader, GivesTheSystemsErrorForAMissingFileAndOneForAnEmptyOne) {
  const TemporaryFolder folder;
  PointLists lists;
  EXPECT_EQ(ReadMps(folder.WidePathTo("none.mps"), lists, true), kStatusFileNotFound);
  EXPECT_EQ(ReadMps(folder.WidePathTo("."), lists, true), kStatusAccessDenied);
  EXPECT_EQ(ReadMps(folder.Put("empty.mps", ""), lists, true), kStatusFailure);
  EXPECT_EQ(ReadMps(folder.Put("a.mps", "M"), lists, true), kStatusInvalidArgument);
  EXPECT_TRUE(lists.empty());
}

TEST(MpsReader, RefusesAnotherMagic) {
  PointLists lists;
  EXPECT_EQ(Parse("", lists), 0x80070057u);
  EXPECT_EQ(Parse("MsRcd", lists), 0x80070057u);
  EXPECT_EQ(Parse(Text("MsRcf") + Record('D', Hex("6C 00")), lists), 0x80070057u);
  EXPECT_TRUE(lists.empty());
}

TEST(MpsReader, KeepsWhatIsWholeOfAFileCutAnywhere) {
  const std::string head = HeadOfVersion('i');
  const std::string pool = Waypoint("A", 8, kHere);
  const std::string routeHead = RouteHead("Tour", 2);
  const std::string bytes = head + pool + Record('R', routeHead + LastStop("A") + LastStop("A"));
  const size_t routeAt = head.size() + pool.size() + 5;
  const size_t firstStopAt = routeAt + routeHead.size() + 2;
  for (size_t size = 6; size <= bytes.size(); ++size) {
    PointLists lists;
    ASSERT_EQ(Parse(bytes.substr(0, size), lists), kStatusSuccess) << size;
    ASSERT_EQ(lists.size(), size >= routeAt ? 2u : 1u) << size;
    if (size < routeAt) continue;
    const size_t secondStopAt = firstStopAt + LastStop("A").size();
    EXPECT_EQ(lists[1]->Count(),
              size_t{size >= firstStopAt ? 1u : 0u} + (size >= secondStopAt ? 1u : 0u))
        << size;
  }
}

TEST(MpsReader, HostileCountsEndWithTheFile) {
  const std::string head = HeadOfVersion('i') + Waypoint("A", 8, kHere);
  constexpr int32_t kMost = 0x7FFFFFFF;
  for (const std::string& record :
       {Record('R', RouteHead("", kMost)),
        Record('R', RouteHead("", kMost) + StopStart("A") + Int32(kMost)),
        Record('R', RouteHead("", kMost) + LastStop("A")),
        Record('T', Text("") + Repeat(5, 0) + Int32(kMost)), RecordOfLength(kMost, 'R', "")}) {
    PointLists lists;
    EXPECT_EQ(Parse(head + record, lists), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_LE(lists[1]->Count(), 1u);
  }
}

TEST(MpsReader, TakesALongRecordOfBytesThatMeanNothing) {
  for (const char type : {'W', 'R', 'T', 'A', 'Q'}) {
    for (const char byte : {'\0', 'A', '\xFF'}) {
      PointLists lists;
      EXPECT_EQ(Parse(HeadOfVersion('i') + Record(type, std::string(100000, byte)), lists),
                kStatusSuccess);
    }
  }
}

// ---- Both ----

TEST(Mps, RoundTripKeepsOrderAndNames) {
  const TemporaryFolder folder;
  const auto route =
      MakeList("Alpen \u00fcber Land", MakePoint(47.26921, 11.40410, "Innsbruck", "", 574),
               MakePoint(46.49067, 11.33982, "Bozen"), MakePoint(46.94798, 7.44743, "Bern", "lost"),
               MakePoint(47.26921, 11.40410, "Innsbruck", "", 574));
  EXPECT_EQ(WriteMps(folder.WidePathTo("a.mps"), route, 0, true), kStatusSuccess);
  PointLists lists;
  EXPECT_EQ(ReadMps(folder.WidePathTo("a.mps"), lists, true), kStatusSuccess);
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(lists[1]->name, route.name);
  EXPECT_EQ(NamesOf(*lists[1]), "Innsbruck;Bozen;Bern;Innsbruck;");
  EXPECT_EQ(lists[1]->points[0].latitude, static_cast<double>(47.26921f));
  EXPECT_EQ(lists[1]->points[3].altitude, 574.0);
}

TEST(Mps, EmptyListComesBackAsNoWaypoints) {
  const std::string bytes = Bytes(CGpsRoute());
  PointLists lists;
  ConversionContext context;
  const ConversionScope scope(context);
  EXPECT_EQ(Parse(bytes, lists), kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindWaypoints);
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
}

TEST(Mps, ReadsTheExample) {
  PointLists lists;
  EXPECT_EQ(ReadMps(WidePath(CORVANE_SOURCE_FOLDER "/examples/norwegian-fjords.mps"), lists, true),
            kStatusSuccess);
  const CGpsPointArray& route = *lists.back();
  EXPECT_EQ(route.GetKind(), kKindRoute);
  ASSERT_EQ(route.Count(), 7u);
  EXPECT_EQ(route.points.front().name, "Bergen");
  EXPECT_EQ(route.points.back().name, "\u00c5lesund");
  EXPECT_EQ(route.name, "Norwegian fjords");
  EXPECT_TRUE(route.points[2].IsNear(MakePoint(60.86291, 7.11373)));
}

}  // namespace
