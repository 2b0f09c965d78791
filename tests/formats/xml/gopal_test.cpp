#include "formats/xml/gopal.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

// The lines in front of the destinations.
const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\n"
    "<tour><options VehicleSpeedNonMotorway=\"27\" VehicleSpeedMotorway=\"33\""
    " VehicleSpeedInPedestrianArea=\"2\" Type=\"3\" Tunnels=\"1\" TollRoad=\"1\" TTIMode=\"0\""
    " PedestrianSpeed=\"1\" MotorWays=\"0\" Mode=\"2\" Ferries=\"1\" CyclistSpeed=\"4\"/>\n";

std::string GoPalBytes(const CGpsPointArray& list) { return BytesOf(WriteGoPalBody, list); }

TEST(GoPalWriter, WritesMetresOnTheMercatorPlane) {
  // Paris on a sphere of 6371000 m: 261554.93 and 6243571.79; Rio: -4804787.27 and -2623266.54.
  const auto list = MakeList("lost", MakePoint(48.85661, 2.35222, "Paris", "lost", 35.0),
                             MakePoint(-22.95192, -43.21049, ""), MakePoint(0, 0, "Null"));
  EXPECT_EQ(GoPalBytes(list),
            kHead +
                "<dest Longitude=\"261555\" Latitude=\"6243572\" Country=\"0\" City=\"Paris\"/>\n"
                "<dest Longitude=\"-4804787\" Latitude=\"-2623267\" Country=\"0\" City=\"\"/>\n"
                "<dest Longitude=\"0\" Latitude=\"0\" Country=\"0\" City=\"Null\"/>\n"
                "</tour>\n");
}

TEST(GoPalWriter, EmptyListIsATourWithoutDestinations) {
  EXPECT_EQ(GoPalBytes(CGpsRoute()), kHead + "</tour>\n");
}

TEST(GoPalWriter, NarrowsNamesAndLeavesThemRaw) {
  EXPECT_EQ(
      GoPalBytes(MakeList("", MakePoint(0, 0, "K\u00f6ln & <\"Bonn\"> '%d' \u0141\U0001F600"))),
      kHead +
          "<dest Longitude=\"0\" Latitude=\"0\" Country=\"0\""
          " City=\"K\xF6ln & <\"Bonn\"> '%d' ???\"/>\n</tour>\n");
}

TEST(GoPalReader, ReadsDestinations) {
  PointLists lists;
  EXPECT_EQ(ParseGoPal("<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\r\n"
                       "<tour><options Type=\"3\"/>\r\n"
                       "<dest City=\"K\xF6ln &amp; Bonn\" Latitude=\"6243572\" Country=\"0\""
                       " Longitude=\"261555\" Street=\"x\"/>\r\n"
                       "<dest Longitude=\"-4804787\" Latitude=\"-2623267\"/>\r\n"
                       "<dest/>\r\n</tour>\r\n",
                       lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 3u);
  const CGpsPoint& first = lists[0]->points[0];
  EXPECT_EQ(first.name, "K\u00f6ln & Bonn");
  EXPECT_NEAR(first.latitude, 48.85661123864857, 1e-12);
  EXPECT_NEAR(first.longitude, 2.3522206263607357, 1e-12);
  const CGpsPoint& second = lists[0]->points[1];
  EXPECT_EQ(second.name, "");
  EXPECT_NEAR(second.latitude, -22.951923795995047, 1e-12);
  EXPECT_NEAR(second.longitude, -43.2104876093744, 1e-12);
  EXPECT_TRUE(lists[0]->points[2].IsNull());
}

TEST(GoPalReader, AppendsAtTheStartOfADestination) {
  PointLists lists;
  EXPECT_EQ(ParseGoPal("<tour><dest City=\"Paris\">", lists, ContextInPlace()), kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "Paris");
}

TEST(GoPalReader, ClampsPositionsOutsideOfTheWorld) {
  PointLists lists;
  ParseGoPal(
      "<tour><dest Longitude=\"30000000\" Latitude=\"99999999999\"/>"
      "<dest Longitude=\"-30000000\" Latitude=\"-99999999999\"/></tour>",
      lists, ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].longitude, 180.0);
  EXPECT_NEAR(lists[0]->points[0].latitude, 90.0, 1e-9);
  EXPECT_EQ(lists[0]->points[1].longitude, -180.0);
  EXPECT_NEAR(lists[0]->points[1].latitude, -90.0, 1e-9);
}

TEST(GoPalReader, PositionsAreWholeNumbers) {
  PointLists lists;
  ParseGoPal("<tour><dest Longitude=\"261555.9\" Latitude=\"north\"/></tour>", lists,
             ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_NEAR(lists[0]->points[0].longitude, 2.3522206263607357, 1e-12);
  EXPECT_EQ(lists[0]->points[0].latitude, 0.0);
}

TEST(GoPal, ANameWithAnAmpersandCannotBeReadBack) {
  const auto list = MakeList("", MakePoint(48.85661, 2.35222, "Paris"),
                             MakePoint(50.93333, 6.95, "K\u00f6ln & Bonn"), MakePoint(1, 2, "c"));
  PointLists lists;
  EXPECT_EQ(ParseGoPal(GoPalBytes(list), lists, ContextInPlace()), kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "Paris");
}

TEST(GoPal, RoundTripKeepsPositionsToTheMetre) {
  const auto list = MakeList("", MakePoint(48.85661, 2.35222, "Ch\u00e2telet"),
                             MakePoint(-22.95192, -43.21049, "Corcovado, 'Rio'"));
  PointLists lists;
  EXPECT_EQ(ParseGoPal(GoPalBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(lists[0]->points[i], list.points[i]);
    EXPECT_LE(lists[0]->points[i].DistanceTo(list.points[i]), 1u);
  }
}

}  // namespace
