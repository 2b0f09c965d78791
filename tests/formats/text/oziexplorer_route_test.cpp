#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/text/oziexplorer.h"
#include "tests/formats/text/oziexplorer_samples.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

using namespace oziexplorer;

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

}  // namespace
