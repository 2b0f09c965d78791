#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/text/oziexplorer.h"
#include "tests/formats/text/oziexplorer_samples.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

using namespace oziexplorer;

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

}  // namespace
