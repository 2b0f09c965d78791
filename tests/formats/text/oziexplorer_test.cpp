#include "formats/text/oziexplorer.h"

#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "core/conversion_notes.h"
#include "core/status.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"
#include "tests/temporary_folder.h"

namespace {

using std::string_literals::operator""s;

constexpr std::string_view kRteHead =
    "OziExplorer Route File Version 1.0\r\nWGS 84\r\nReserved 1\r\nReserved 2\r\n";
constexpr std::string_view kRt2Head = "H1,OziExplorer CE Route2 File Version 1.0\r\nH2,WGS 84\r\n";
constexpr std::string_view kPltHead =
    "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n";
constexpr std::string_view kWptHead =
    "OziExplorer Waypoint File Version 1.0\r\nWGS 84\r\nReserved 2\r\nReserved 3\r\n";

std::string Joined(std::string_view head, std::string_view rest) {
  return std::string(head) + std::string(rest);
}

using ParseFn = uint32_t (*)(std::string_view, PointLists&);

// What a parser gives for some bytes.
struct Parsed {
  Parsed(ParseFn parse, std::string_view bytes) : status(parse(bytes, lists)) {}

  PointLists lists;
  ConversionNotes notes;
  uint32_t status;

  uint64_t PassedOver() const { return notes.Count(EConversionNote::kLinePassedOver); }
};

TEST(OziRouteWriter, WritesHeaderRouteAndWaypoints) {
  const auto route = MakeList("Tour", MakePoint(48.856614, 2.3522219, "Paris", "start", 35.0),
                              MakePoint(-33.8567844, 151.2152967, "Sydney"),
                              MakePoint(51.5, -0.12775, "", "no name"));
  EXPECT_EQ(BytesOf(WriteOziRouteBody, route),
            Joined(kRteHead,
                   "R,1,Tour,,\r\n"
                   "W,1,1,1,Paris,48.8566140,2.3522219,,0,1,3,0,65535,start,0,0\r\n"
                   "W,1,2,2,Sydney,-33.8567844,151.2152967,,0,1,3,0,65535,,0,0\r\n"
                   "W,1,3,3,,51.5000000,-0.1277500,,0,1,3,0,65535,no name,0,0\r\n"));
}

TEST(OziRouteWriter, WritesOnlyTheHeadOfAnEmptyList) {
  EXPECT_EQ(BytesOf(WriteOziRouteBody, CGpsRoute()), Joined(kRteHead, "R,1,,,\r\n"));
}

TEST(OziRouteWriter, ReplacesCommasInTextsOfPointsOnly) {
  const auto route =
      MakeList("North, then south", MakePoint(1, 2, "Rue A, Paris", "left, right, left"));
  EXPECT_EQ(BytesOf(WriteOziRouteBody, route),
            Joined(kRteHead,
                   "R,1,North, then south,,\r\n"
                   "W,1,1,1,Rue A  Paris,1.0000000,2.0000000,,0,1,3,0,65535,left  right  left,"
                   "0,0\r\n"));
}

TEST(OziRouteWriter, NarrowsTexts) {
  const auto route = MakeList("\u0141\u00f3d\u017a",
                              MakePoint(0, 0, "Caf\u00e9 \u20ac |\"=\"|", "\U0001F600\u00fc"));
  EXPECT_EQ(BytesOf(WriteOziRouteBody, route),
            Joined(kRteHead,
                   "R,1,?\xF3"
                   "d?,,\r\n"
                   "W,1,1,1,Caf\xE9 ? |\"=\"|,0.0000000,0.0000000,,0,1,3,0,65535,??\xFC,0,0\r\n"));
}

TEST(OziRouteWriter, CutsCommentsAfterFortyBytesAndNamesNever) {
  const std::string fifty = "12345678901234567890123456789012345678901234567890";
  const std::string forty = fifty.substr(0, 40);
  const std::string prefix = ",1.0000000,2.0000000,,0,1,3,0,65535,";
  const auto route = MakeList("", MakePoint(1, 2, fifty, forty), MakePoint(1, 2, "b", forty + "x"),
                              MakePoint(1, 2, "c", fifty.substr(0, 39) + ",x"));
  EXPECT_EQ(BytesOf(WriteOziRouteBody, route),
            Joined(kRteHead,
                   "R,1,,,\r\n"
                   "W,1,1,1," +
                       fifty + prefix + forty + ",0,0\r\n" + "W,1,2,2,b" + prefix + forty +
                       ",0,0\r\n" + "W,1,3,3,c" + prefix + fifty.substr(0, 39) + " ,0,0\r\n"));
}

TEST(OziRouteWriter, CountsTheFortyBytesOfTheNarrowText) {
  std::string accents;
  for (int i = 0; i < 41; ++i) accents += "\u00e9";
  EXPECT_EQ(BytesOf(WriteOziRouteBody, MakeList("", MakePoint(1, 2, "a", accents))),
            Joined(kRteHead, "R,1,,,\r\nW,1,1,1,a,1.0000000,2.0000000,,0,1,3,0,65535," +
                                 std::string(40, '\xE9') + ",0,0\r\n"));
}

TEST(OziRouteReader, GivesAListForEachRouteLine) {
  const Parsed parsed(ParseOziRoute,
                      "OziExplorer Route File Version 1.0\nWGS 84\nReserved 1\nReserved 2\n"
                      "R,  0,Outward ,first,255\n"
                      "W,  0,  1,  7,Home            , -26.5, 152.25,36169.6,0,1,3,0,65535,begin\n"
                      "W,  0,  2,  8,Away,-27,153,36169.6,0,1,3,0,65535,the end,0,0\n"
                      "R,  1,Back,second,255\n"
                      "W,  1,  1,  8,Away,-27,153,,0,1,3,0,65535,,0,0\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 2u);
  EXPECT_EQ(parsed.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(parsed.lists[0]->name, "Outward ");
  ASSERT_EQ(parsed.lists[0]->Count(), 2u);
  const CGpsPoint& home = parsed.lists[0]->points[0];
  EXPECT_EQ(home.name, "Home            ");
  EXPECT_EQ(home.latitude, -26.5);
  EXPECT_EQ(home.longitude, 152.25);
  EXPECT_EQ(home.altitude, 0.0);
  EXPECT_EQ(home.tolerance, kDefaultTolerance);
  EXPECT_EQ(home.comment, "") << "fourteen fields hold no comment";
  EXPECT_EQ(parsed.lists[0]->points[1].comment, "the end");
  EXPECT_EQ(parsed.lists[1]->name, "Back");
  ASSERT_EQ(parsed.lists[1]->Count(), 1u);
  EXPECT_EQ(parsed.lists[1]->points[0].name, "Away");
  EXPECT_EQ(parsed.PassedOver(), 0u);
}

TEST(OziRouteReader, DropsWaypointsOfAnotherRouteNumber) {
  const Parsed parsed(ParseOziRoute, Joined(kRteHead,
                                            "R,1,A,,\r\nW,2,1,1,two,1,2,\r\nW,1,2,2,one,1,2,\r\n"
                                            "R,2,B,,\r\nW,1,3,3,late,1,2,\r\n"));
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 2u);
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  EXPECT_EQ(parsed.lists[0]->points[0].name, "one");
  EXPECT_EQ(parsed.lists[1]->Count(), 0u);
  EXPECT_EQ(parsed.PassedOver(), 2u);
}

TEST(OziRouteReader, DropsWaypointsBeforeAnyRoute) {
  const Parsed parsed(ParseOziRoute, Joined(kRteHead, "W,1,1,1,early,1,2,\r\nW,-1,1,1,x,1,2,\r\n"));
  EXPECT_EQ(parsed.status, kStatusSuccess);
  EXPECT_TRUE(parsed.lists.empty());
  EXPECT_EQ(parsed.PassedOver(), 2u);
}

TEST(OziRouteReader, ShortRouteLineHasNumberMinusOneAndNoName) {
  const Parsed parsed(ParseOziRoute, Joined(kRteHead,
                                            "R,1,Name\r\nW,1,1,1,one,1,2,\r\nW,-1,1,1,minus,1,2,"
                                            "\r\nR\r\nW,-1,1,1,again,1,2,\r\n"));
  ASSERT_EQ(parsed.lists.size(), 2u);
  EXPECT_EQ(parsed.lists[0]->name, "");
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  EXPECT_EQ(parsed.lists[0]->points[0].name, "minus");
  ASSERT_EQ(parsed.lists[1]->Count(), 1u);
  EXPECT_EQ(parsed.lists[1]->points[0].name, "again");
}

TEST(OziRouteReader, NeedsEightFieldsForAWaypoint) {
  const Parsed parsed(ParseOziRoute,
                      Joined(kRteHead, "R,1,,\r\nW,1,1,1,seven,1,2\r\nW,1,1,1,eight,1,2,\r\n"));
  ASSERT_EQ(parsed.lists.size(), 1u);
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  EXPECT_EQ(parsed.lists[0]->points[0].name, "eight");
  EXPECT_EQ(parsed.PassedOver(), 1u);
}

TEST(OziRouteReader, ReadsHexadecimalRouteNumbers) {
  const Parsed parsed(ParseOziRoute, Joined(kRteHead,
                                            "R,0x1F,,\r\nW,31,1,1,a,1,2,\r\nW,0x1f,1,1,b,1,2,\r\n"
                                            "R,none,,\r\nW,0,1,1,c,1,2,\r\nW,,1,1,d,1,2,\r\n"));
  ASSERT_EQ(parsed.lists.size(), 2u);
  EXPECT_EQ(parsed.lists[0]->Count(), 2u);
  EXPECT_EQ(parsed.lists[1]->Count(), 2u) << "what is no number is 0";
}

TEST(OziRouteReader, TakesWhatIsNoNumberAsZero) {
  const Parsed parsed(ParseOziRoute,
                      Joined(kRteHead, "R,1,,\r\nW,1,1,1,a,north,0x2.5,\r\nW,1,1,1,b, 4.5N,,\r\n"));
  ASSERT_EQ(parsed.lists[0]->Count(), 2u);
  EXPECT_EQ(parsed.lists[0]->points[0].latitude, 0.0);
  EXPECT_EQ(parsed.lists[0]->points[0].longitude, 2.5);
  EXPECT_EQ(parsed.lists[0]->points[1].latitude, 4.5);
  EXPECT_EQ(parsed.lists[0]->points[1].longitude, 0.0);
}

TEST(OziRouteReader, DoesNothingBeforeTheHeader) {
  const Parsed late(ParseOziRoute,
                    "R,1,A,,\nW,1,1,1,a,1,2,\nOziExplorer Route File Version 1.0,x\nR,1,B,,\n"
                    "W,1,1,1,b,1,2,\n");
  EXPECT_EQ(late.status, kStatusSuccess);
  ASSERT_EQ(late.lists.size(), 1u);
  EXPECT_EQ(late.lists[0]->name, "B");

  const Parsed never(ParseOziRoute, "OziExplorer Route File Version 1.1\nR,1,A,,\n");
  EXPECT_EQ(never.status, kStatusFailure);
  EXPECT_TRUE(never.lists.empty());

  const Parsed marked(ParseOziRoute, "\xEF\xBB\xBFOziExplorer Route File Version 1.0\nR,1,A,,\n");
  EXPECT_EQ(marked.status, kStatusFailure) << "no byte order mark is known here";

  const Parsed nothingElse(ParseOziRoute, kRteHead);
  EXPECT_EQ(nothingElse.status, kStatusSuccess);
  EXPECT_TRUE(nothingElse.lists.empty());
}

TEST(OziRouteReader, WidensTexts) {
  const Parsed parsed(ParseOziRoute, Joined(kRteHead,
                                            "R,1,\xC9t\xE9,\r\n"
                                            "W,1,1,1,Caf\xC3\xA9,1,2,,0,1,3,0,65535,\xFC,\r\n"));
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  EXPECT_EQ(parsed.lists[0]->name, "\u00c9t\u00e9");
  EXPECT_EQ(parsed.lists[0]->points[0].name, "Caf\u00c3\u00a9");
  EXPECT_EQ(parsed.lists[0]->points[0].comment, "\u00fc");
}

TEST(OziRoute, NameOfAListEndsAtItsCommaWhenReadBack) {
  const Parsed parsed(ParseOziRoute,
                      BytesOf(WriteOziRouteBody, MakeList("North, south", MakePoint(1, 2, "a"))));
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->name, "North");
  EXPECT_EQ(parsed.lists[0]->Count(), 1u);
}

TEST(OziRoute, RoundTrips) {
  const auto route = MakeList("\u00c9tapes", MakePoint(48.5734053, 7.7521113, "Stra\u00dfe", "a b"),
                              MakePoint(-12.0463731, -77.042754, "Lima"));
  const Parsed parsed(ParseOziRoute, BytesOf(WriteOziRouteBody, route));
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->name, route.name);
  ASSERT_EQ(parsed.lists[0]->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(parsed.lists[0]->points[i], route.points[i]);
    EXPECT_EQ(parsed.lists[0]->points[i].latitude, route.points[i].latitude);
    EXPECT_EQ(parsed.lists[0]->points[i].longitude, route.points[i].longitude);
  }
}

TEST(OziRouteReader, SurvivesACutAtEveryByte) {
  const std::string whole =
      "OziExplorer Route File Version 1.0\r\nWGS "
      "84\r\nR,1,A,,\r\nW,1,1,1,a,1,2,,0,1,3,0,65535,c,0,0\r\n";
  constexpr size_t kHeaderLength = 34;
  const size_t routeLine = whole.find("R,1");
  const size_t longitudeEnd = whole.find(",,0,1,3");
  for (size_t length = 0; length <= whole.size(); ++length) {
    const Parsed parsed(ParseOziRoute, whole.substr(0, length));
    // A CR without its LF still belongs to the line.
    const bool known = length == kHeaderLength || length > kHeaderLength + 1;
    EXPECT_EQ(parsed.status, known ? kStatusSuccess : kStatusFailure) << length;
    ASSERT_EQ(parsed.lists.size(), length > routeLine ? 1u : 0u) << length;
    if (length > routeLine) {
      EXPECT_EQ(parsed.lists[0]->Count(), length > longitudeEnd ? 1u : 0u) << length;
    }
  }
}

TEST(OziRouteCeWriter, WritesHeaderRouteAndWaypoints) {
  const auto route =
      MakeList("Tour, \u0141", MakePoint(48.856614, 2.3522219, "Rue A, Paris", "lost", 35.0),
               MakePoint(-0.5, -179.9999999, "\u00c9"));
  EXPECT_EQ(BytesOf(WriteOziRouteCeBody, route), Joined(kRt2Head,
                                                        "H3,Tour, ?,,0\r\n"
                                                        "W,Rue A  Paris,48.8566140,2.3522219,0\r\n"
                                                        "W,\xC9,-0.5000000,-179.9999999,0\r\n"));
  EXPECT_EQ(BytesOf(WriteOziRouteCeBody, CGpsRoute()), Joined(kRt2Head, "H3,,,0\r\n"));
}

TEST(OziRouteCeReader, GivesAListForEachRouteLine) {
  const Parsed parsed(ParseOziRouteCe, Joined(kRt2Head,
                                              "W,early,1,2,0\r\n"
                                              "H3,\xC9t\xE9,,0\r\n"
                                              "W,Caf\xE9,48.5,-7.25,0,more\r\n"
                                              "W,four,1,2\r\n"
                                              "H1,again\r\n"
                                              "H3,no name\r\n"
                                              "W,b,x,0x3,\r\n"));
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 2u);
  EXPECT_EQ(parsed.lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(parsed.lists[0]->name, "\u00c9t\u00e9");
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  const CGpsPoint& cafe = parsed.lists[0]->points[0];
  EXPECT_EQ(cafe.name, "Caf\u00e9");
  EXPECT_EQ(cafe.latitude, 48.5);
  EXPECT_EQ(cafe.longitude, -7.25);
  EXPECT_EQ(cafe.altitude, 0.0);
  EXPECT_EQ(cafe.comment, "");
  EXPECT_EQ(parsed.lists[1]->name, "");
  ASSERT_EQ(parsed.lists[1]->Count(), 1u);
  EXPECT_EQ(parsed.lists[1]->points[0].latitude, 0.0);
  EXPECT_EQ(parsed.lists[1]->points[0].longitude, 3.0);
  EXPECT_EQ(parsed.PassedOver(), 2u);
}

TEST(OziRouteCeReader, NamesARouteFromALineOfThreeFields) {
  const Parsed parsed(ParseOziRouteCe, "H1\nH3,A,\nH3,B\n");
  ASSERT_EQ(parsed.lists.size(), 2u);
  EXPECT_EQ(parsed.lists[0]->name, "A");
  EXPECT_EQ(parsed.lists[1]->name, "");
}

TEST(OziRouteCeReader, DoesNothingBeforeTheHeader) {
  const Parsed late(ParseOziRouteCe, "H3,A,,0\nW,a,1,2,0\nH1\nH3,B,,0\n");
  EXPECT_EQ(late.status, kStatusSuccess);
  ASSERT_EQ(late.lists.size(), 1u);
  EXPECT_EQ(late.lists[0]->name, "B");

  const Parsed never(ParseOziRouteCe, "H2,WGS 84\nH3,A,,0\nW,a,1,2,0\n");
  EXPECT_EQ(never.status, kStatusFailure);
  EXPECT_TRUE(never.lists.empty());

  const Parsed nothingElse(ParseOziRouteCe, "H1,x\n");
  EXPECT_EQ(nothingElse.status, kStatusSuccess);
  EXPECT_TRUE(nothingElse.lists.empty());
}

TEST(OziRouteCe, RoundTripsNamesAndPositions) {
  const auto route =
      MakeList("N\u00eemes", MakePoint(43.836699, 4.360054, "Ar\u00e8nes", "comment"));
  const Parsed parsed(ParseOziRouteCe, BytesOf(WriteOziRouteCeBody, route));
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->name, "N\u00eemes");
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  EXPECT_EQ(parsed.lists[0]->points[0], MakePoint(43.836699, 4.360054, "Ar\u00e8nes"));
}

TEST(OziTrackWriter, WritesHeaderCountAndPositionsInFeet) {
  // 100 m are 328.083989501... ft, -430.5 m are -1412.401574803... ft.
  const auto track = MakeList<CGpsTrack>(
      "Way, \u00e9 \u0141", MakePoint(48.856614, 2.3522219, "lost", "lost", 100.0),
      MakePoint(-33.8567844, -151.2152967, "", "", -430.5), MakePoint(0.0, 0.0));
  EXPECT_EQ(BytesOf(WriteOziTrackBody, track),
            Joined(kPltHead,
                   "0, 2, 65280, Way, \xE9 ?, 1, 0, 0, 65280\r\n"
                   " 3\r\n"
                   "+48.8566140, +002.3522219, 0, 328.08399, , ,\r\n"
                   "-33.8567844, -151.2152967, 0, -1412.40157, , ,\r\n"
                   "+00.0000000, +000.0000000, 0, 0.00000, , ,\r\n"));
  EXPECT_EQ(BytesOf(WriteOziTrackBody, CGpsTrack()),
            Joined(kPltHead, "0, 2, 65280, , 1, 0, 0, 65280\r\n 0\r\n"));
}

TEST(OziTrackReader, SkipsSixLinesAndTakesPositions) {
  const Parsed parsed(ParseOziTrack,
                      "1,2,3,4,5\n1,2,3,4,5\n\n1,2,3,4,5\n1,2,3,4,5\n1,2,3,4,5\n"
                      "   -26.5, 152.25,1, 328.08399,36169.6,30-Dec-99,11:00\n"
                      "48.5,7.5,0,-100,\n"
                      "48.5,7.5,0,100\n"
                      "\n"
                      "east,0x7.5,,none,\n");
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(parsed.lists[0]->name, "");
  ASSERT_EQ(parsed.lists[0]->Count(), 3u);
  const CGpsPoint& first = parsed.lists[0]->points[0];
  EXPECT_EQ(first.latitude, -26.5);
  EXPECT_EQ(first.longitude, 152.25);
  EXPECT_EQ(first.altitude, 328.08399 * 0.3048);
  EXPECT_EQ(first.name, "");
  EXPECT_EQ(first.comment, "");
  EXPECT_DOUBLE_EQ(parsed.lists[0]->points[1].altitude, -30.48);
  EXPECT_EQ(parsed.lists[0]->points[2].latitude, 0.0);
  EXPECT_EQ(parsed.lists[0]->points[2].longitude, 7.5);
  EXPECT_EQ(parsed.lists[0]->points[2].altitude, 0.0);
  EXPECT_EQ(parsed.PassedOver(), 1u) << "four fields are too few";
}

TEST(OziTrack, LosesNamesAndRoundsFeetToFiveDecimals) {
  const auto track =
      MakeList<CGpsTrack>("Never back", MakePoint(45.1653, 6.4297, "Valloire", "x", 100.0));
  const Parsed parsed(ParseOziTrack, BytesOf(WriteOziTrackBody, track));
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->name, "");
  ASSERT_EQ(parsed.lists[0]->Count(), 1u);
  const CGpsPoint& point = parsed.lists[0]->points[0];
  EXPECT_EQ(point, MakePoint(45.1653, 6.4297));
  EXPECT_NE(point.altitude, 100.0);
  EXPECT_NEAR(point.altitude, 100.0, 0.00001);
}

TEST(OziWaypointsWriter, WritesHeaderAndWaypoints) {
  const auto list = MakeList<CGpsWaypointList>(
      "ignored", MakePoint(48.856614, 2.3522219, "Rue A, Paris", "caf\u00e9, \u0141", 100.0),
      MakePoint(-33.8567844, -151.2152967, "", std::string(41, 'c'), -430.5));
  EXPECT_EQ(BytesOf(WriteOziWaypointsBody, list),
            Joined(kWptHead,
                   "1, Rue A  Paris, +48.8566140, +002.3522219,, 18, 1, 3, 0, 65535, caf\xE9  ?, "
                   "0, 0, 0, 328.08399\r\n"
                   "2, , -33.8567844, -151.2152967,, 18, 1, 3, 0, 65535, " +
                       std::string(40, 'c') + ", 0, 0, 0, -1412.40157\r\n"));
  EXPECT_EQ(BytesOf(WriteOziWaypointsBody, CGpsWaypointList()), kWptHead);
}

TEST(OziWriters, NeverCutNames) {
  const std::string fifty = "12345678901234567890123456789012345678901234567890";
  const auto list = MakeList("", MakePoint(1, 2, fifty));
  EXPECT_EQ(BytesOf(WriteOziRouteCeBody, list),
            Joined(kRt2Head, "H3,,,0\r\nW," + fifty + ",1.0000000,2.0000000,0\r\n"));
  EXPECT_EQ(BytesOf(WriteOziWaypointsBody, list),
            Joined(kWptHead, "1, " + fifty +
                                 ", +01.0000000, +002.0000000,, 18, 1, 3, 0, 65535, , 0, 0, 0, "
                                 "0.00000\r\n"));
}

TEST(OziWaypointsReader, SkipsThreeLinesAndKeepsTheBlankOfTexts) {
  const Parsed parsed(ParseOziWaypoints,
                      Joined(kWptHead,
                             "  1, Caf\xE9 ,-26.5, 152.25,36169.6,0,1,3,0,65535, on the left,0,0,0,"
                             "328.08399,6,0,17\r\n"
                             "2,B,48.5,7.5,,0,1,3,0,65535,,0,0,0,-100\r\n"));
  EXPECT_EQ(parsed.status, kStatusSuccess);
  ASSERT_EQ(parsed.lists.size(), 1u);
  EXPECT_EQ(parsed.lists[0]->GetKind(), kKindWaypoints);
  EXPECT_EQ(parsed.lists[0]->name, "");
  ASSERT_EQ(parsed.lists[0]->Count(), 2u);
  const CGpsPoint& cafe = parsed.lists[0]->points[0];
  EXPECT_EQ(cafe.name, " Caf\u00e9 ");
  EXPECT_EQ(cafe.latitude, -26.5);
  EXPECT_EQ(cafe.longitude, 152.25);
  EXPECT_EQ(cafe.comment, " on the left");
  EXPECT_EQ(cafe.altitude, 328.08399 * 0.3048);
  EXPECT_EQ(cafe.tolerance, kDefaultTolerance);
  EXPECT_EQ(parsed.lists[0]->points[1].name, "B");
  EXPECT_EQ(parsed.lists[0]->points[1].comment, "");
  EXPECT_DOUBLE_EQ(parsed.lists[0]->points[1].altitude, -30.48);
  EXPECT_EQ(parsed.PassedOver(), 0u);
}

TEST(OziWaypointsReader, LooksAtTheFourthLineAsAtAnyOther) {
  const std::string line = "1,n,48.5,7.5,x\n";
  EXPECT_EQ(Parsed(ParseOziWaypoints, line + line + line).lists[0]->Count(), 0u);
  EXPECT_EQ(Parsed(ParseOziWaypoints, line + line + line + line).lists[0]->Count(), 1u);
}

TEST(OziWaypointsReader, TakesShortLinesFromFiveFieldsOn) {
  const Parsed parsed(ParseOziWaypoints, Joined(kWptHead,
                                                "1,four,1,2\r\n"
                                                "1,five,1,2,\r\n"
                                                "1,ten,1,2,,5,6,7,8,9\r\n"
                                                "1,eleven,1,2,,5,6,7,8,9,comment\r\n"
                                                "1,fourteen,1,2,,5,6,7,8,9,comment,11,12,100\r\n"
                                                "1,fifteen,1,2,,5,6,7,8,9,comment,11,12,13,100\r\n"
                                                "\r\n   \r\n"));
  ASSERT_EQ(parsed.lists[0]->Count(), 5u);
  const char* const names[] = {"five", "ten", "eleven", "fourteen", "fifteen"};
  for (size_t i = 0; i < 5; ++i) {
    const CGpsPoint& point = parsed.lists[0]->points[i];
    EXPECT_EQ(point.name, names[i]);
    EXPECT_EQ(point.longitude, 2.0);
    EXPECT_EQ(point.comment, i < 2 ? "" : "comment");
    EXPECT_DOUBLE_EQ(point.altitude, i < 4 ? 0.0 : 30.48);
  }
  EXPECT_EQ(parsed.PassedOver(), 1u);
}

TEST(OziWaypoints, ReadBackWithABlankInFrontOfTexts) {
  const auto list = MakeList<CGpsWaypointList>(
      "", MakePoint(48.6493, -2.0257, "Saint-Malo", "Cit\u00e9 corsaire", 8.0), MakePoint(1, 2));
  const Parsed parsed(ParseOziWaypoints, BytesOf(WriteOziWaypointsBody, list));
  ASSERT_EQ(parsed.lists[0]->Count(), 2u);
  EXPECT_EQ(parsed.lists[0]->points[0],
            MakePoint(48.6493, -2.0257, " Saint-Malo", " Cit\u00e9 corsaire"));
  EXPECT_NEAR(parsed.lists[0]->points[0].altitude, 8.0, 0.00001);
  EXPECT_EQ(parsed.lists[0]->points[1], MakePoint(1, 2, " ", " "));
}

TEST(OziTrackAndWaypoints, SurviveACutAtEveryByte) {
  const std::string track = Joined(kPltHead, "0, 2\r\n 1\r\n+48.5, +007.5, 0, 1.5, , ,\r\n");
  const size_t fourthComma = track.find(", , ,\r\n");
  for (size_t length = 0; length <= track.size(); ++length) {
    const Parsed parsed(ParseOziTrack, track.substr(0, length));
    EXPECT_EQ(parsed.status, kStatusSuccess) << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    EXPECT_EQ(parsed.lists[0]->Count(), length > fourthComma ? 1u : 0u) << length;
  }

  const std::string waypoints = Joined(kWptHead, "1, a, 48.5, 7.5,, 18, 1, 3, 0, 9, c, 0, 0, 0, 1");
  const size_t fourthCommaOfWaypoint = waypoints.find(",, 18");
  for (size_t length = 0; length <= waypoints.size(); ++length) {
    const Parsed parsed(ParseOziWaypoints, waypoints.substr(0, length));
    EXPECT_EQ(parsed.status, kStatusSuccess) << length;
    ASSERT_EQ(parsed.lists.size(), 1u) << length;
    EXPECT_EQ(parsed.lists[0]->Count(), length > fourthCommaOfWaypoint ? 1u : 0u) << length;
  }
}

TEST(OziReaders, TakeZeroBytesAsText) {
  const Parsed route(ParseOziRoute, Joined(kRteHead, "R,1,A\0B,\nW,1,1,1,\0,1\0,2,\n"s));
  ASSERT_EQ(route.lists.size(), 1u);
  EXPECT_EQ(route.lists[0]->name, "A\0B"s);
  ASSERT_EQ(route.lists[0]->Count(), 1u);
  EXPECT_EQ(route.lists[0]->points[0].name, "\0"s);
  EXPECT_EQ(route.lists[0]->points[0].latitude, 1.0);

  const std::string zeros(1000, '\0');
  for (const ParseFn parse : {ParseOziRoute, ParseOziRouteCe}) {
    const Parsed parsed(parse, zeros);
    EXPECT_EQ(parsed.status, kStatusFailure);
    EXPECT_TRUE(parsed.lists.empty());
  }
  for (const ParseFn parse : {ParseOziTrack, ParseOziWaypoints}) {
    const Parsed parsed(parse, zeros);
    EXPECT_EQ(parsed.status, kStatusSuccess);
    EXPECT_EQ(parsed.lists[0]->Count(), 0u);
  }
}

TEST(OziReaders, TakeLongLines) {
  const std::string megabyte(1 << 20, 'n');
  const std::string commas(1 << 20, ',');
  const Parsed route(ParseOziRoute, Joined(kRteHead, "R,1," + megabyte + ",\nW,1,1,1," + megabyte +
                                                         ",1,2" + commas + "\n" + commas));
  ASSERT_EQ(route.lists[0]->Count(), 1u);
  EXPECT_EQ(route.lists[0]->points[0].name, megabyte);

  const Parsed waypoints(ParseOziWaypoints, "\n\n\n" + commas + "\n" + std::string(1 << 20, ' '));
  ASSERT_EQ(waypoints.lists[0]->Count(), 1u);
  EXPECT_TRUE(waypoints.lists[0]->points[0].IsNull());
}

TEST(OziReaders, RoutesWithoutPointsCannotFillTheMemory) {
  std::string routes(kRteHead);
  std::string ceRoutes(kRt2Head);
  for (int i = 0; i < 100000; ++i) {
    routes += "R,1,x,\n";
    ceRoutes += "H3,x,\n";
  }
  const Parsed empty(ParseOziRoute, routes);
  EXPECT_EQ(empty.status, kStatusSuccess);
  EXPECT_EQ(empty.lists.size(), 1000u);

  // The number and the name of the line that comes last are those that count.
  const Parsed route(ParseOziRoute, routes + "R,2,y,\nW,2,1,1,a,1,2,\nR\nW,-1,1,1,b,1,2,\n");
  ASSERT_EQ(route.lists.size(), 1001u);
  EXPECT_EQ(route.lists[999]->name, "y");
  ASSERT_EQ(route.lists[999]->Count(), 1u);
  EXPECT_EQ(route.lists[1000]->name, "");
  EXPECT_EQ(route.lists[1000]->points.at(0).name, "b");

  const Parsed ceRoute(ParseOziRouteCe, ceRoutes + "H3\nW,a,1,2,0\n");
  ASSERT_EQ(ceRoute.lists.size(), 1000u);
  EXPECT_EQ(ceRoute.lists[998]->name, "x");
  EXPECT_EQ(ceRoute.lists[999]->name, "");
  EXPECT_EQ(ceRoute.lists[999]->Count(), 1u);
}

using ReadFn = uint32_t (*)(const WideString&, PointLists&, bool);

TEST(OziReaders, TellEmptyTinyAndMissingFiles) {
  const TemporaryFolder folder;
  for (const ReadFn read : {ReadOziRoute, ReadOziRouteCe}) {
    PointLists lists;
    EXPECT_EQ(read(folder.Put("empty", ""), lists, true), kStatusFailure);
    EXPECT_EQ(read(folder.Put("tiny", "H"), lists, true), kStatusFailure);
    EXPECT_EQ(read(folder.WidePathTo("missing"), lists, true), kStatusFailure);
    EXPECT_TRUE(lists.empty());
  }
  for (const ReadFn read : {ReadOziTrack, ReadOziWaypoints}) {
    PointLists lists;
    EXPECT_EQ(read(folder.Put("empty", ""), lists, true), kStatusSuccess);
    EXPECT_EQ(read(folder.Put("tiny", "1"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_EQ(lists[0]->Count() + lists[1]->Count(), 0u);
    EXPECT_EQ(read(folder.WidePathTo("missing"), lists, true), kStatusFailure);
    EXPECT_EQ(lists.size(), 2u);
  }
}

using WriteFn = uint32_t (*)(const WideString&, const CGpsPointArray&, uint32_t, bool);
using BodyFn = void (*)(ByteSink&, const CGpsPointArray&);

TEST(OziWriters, WriteOneFileWhateverTheLimit) {
  const TemporaryFolder folder;
  const auto list = MakeList("A", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"), MakePoint(5, 6));
  const std::pair<WriteFn, BodyFn> formats[] = {{WriteOziRoute, WriteOziRouteBody},
                                                {WriteOziRouteCe, WriteOziRouteCeBody},
                                                {WriteOziTrack, WriteOziTrackBody},
                                                {WriteOziWaypoints, WriteOziWaypointsBody}};
  for (const auto& [write, writeBody] : formats) {
    EXPECT_EQ(write(folder.WidePathTo("a.txt"), list, 2, true), kStatusSuccess);
    EXPECT_EQ(folder.Get("a.txt"), BytesOf(writeBody, list));
    EXPECT_FALSE(folder.Has("a_1.txt"));
    EXPECT_EQ(write(folder.WidePathTo("missing/a.txt"), list, 0, true), kStatusFailure);
  }
}

TEST(OziReaders, ReadFilesOfTheWriters) {
  const TemporaryFolder folder;
  const auto list = MakeList("A", MakePoint(1, 2, "a"), MakePoint(3, 4, "b"));
  const std::pair<WriteFn, ReadFn> formats[] = {{WriteOziRoute, ReadOziRoute},
                                                {WriteOziRouteCe, ReadOziRouteCe},
                                                {WriteOziTrack, ReadOziTrack},
                                                {WriteOziWaypoints, ReadOziWaypoints}};
  for (const auto& [write, read] : formats) {
    PointLists lists;
    EXPECT_EQ(write(folder.WidePathTo("a.txt"), list, 0, true), kStatusSuccess);
    EXPECT_EQ(read(folder.WidePathTo("a.txt"), lists, true), kStatusSuccess);
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0]->Count(), 2u);
    EXPECT_EQ(lists[0]->points[1].longitude, 4.0);
  }
}

}  // namespace
