#include <gtest/gtest.h>

#include "base/status.h"
#include "formats/text/oziexplorer.h"
#include "tests/formats/text/oziexplorer_samples.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

using namespace oziexplorer;

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

}  // namespace
