#include "formats/xml/mapfactor.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

std::string MapFactorBytes(const CGpsPointArray& list) { return BytesOf(WriteMapFactorBody, list); }

std::string Document(const std::string& name, const std::string& stops) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"
         "<routing_points><set><name>" +
         name + "</name>" + stops + "</set></routing_points>";
}

std::string Stop(const std::string& element, const std::string& name, const std::string& latitude,
                 const std::string& longitude) {
  return "<" + element + "><name>" + name + "</name><lat>" + latitude + "</lat><lon>" + longitude +
         "</lon></" + element + ">";
}

TEST(MapFactorWriter, WritesAnEmptyList) {
  EXPECT_EQ(MapFactorBytes(CGpsRoute()), Document("", ""));
}

TEST(MapFactorWriter, OnePointIsADeparture) {
  EXPECT_EQ(MapFactorBytes(MakeList("Short", MakePoint(48.5, 2.25, "Here", "lost", 35))),
            Document("Short", Stop("departure", "Here", "174600000", "8100000")));
}

TEST(MapFactorWriter, TwoPointsAreDepartureAndDestination) {
  EXPECT_EQ(MapFactorBytes(MakeList("", MakePoint(48.85661, 2.35222, "Paris"),
                                    MakePoint(-22.95192, -43.21049, ""))),
            Document("", Stop("departure", "Paris", "175883796", "8467992") +
                             Stop("destination", "", "-82626912", "-155557764")));
}

TEST(MapFactorWriter, PointsBetweenAreWaypoints) {
  EXPECT_EQ(MapFactorBytes(
                MakeList("", MakePoint(1, 2), MakePoint(3, 4), MakePoint(5, 6), MakePoint(7, 8))),
            Document("", Stop("departure", "", "3600000", "7200000") +
                             Stop("waypoint", "", "10800000", "14400000") +
                             Stop("waypoint", "", "18000000", "21600000") +
                             Stop("destination", "", "25200000", "28800000")));
}

TEST(MapFactorWriter, TruncatesTowardZero) {
  // 48.1234567 × 3600000 is 173244444.12; half a millionth of a degree is 1.8 units.
  EXPECT_EQ(MapFactorBytes(
                MakeList("", MakePoint(48.1234567, -48.1234567), MakePoint(0.0000005, -0.0000005))),
            Document("", Stop("departure", "", "173244444", "-173244444") +
                             Stop("destination", "", "1", "-1")));
}

TEST(MapFactorWriter, EscapesNames) {
  EXPECT_EQ(MapFactorBytes(MakeList("A & B", MakePoint(1, 2,
                                                       "\"<&'>, \u0141\u00f3d\u017a|="
                                                       "\U0001F600"))),
            Document("A &amp; B", Stop("departure",
                                       "&quot;&lt;&amp;&apos;&gt;, \u0141\u00f3d\u017a|="
                                       "\U0001F600",
                                       "3600000", "7200000")));
}

// Reads a document without an error.
PointLists Read(const std::string& document) {
  PointLists lists;
  EXPECT_EQ(ParseMapFactor(document, lists, ContextInPlace()), kStatusSuccess);
  return lists;
}

PointLists ReadSets(const std::string& sets) {
  return Read("<routing_points>" + sets + "</routing_points>");
}

TEST(MapFactorReader, ReadsASet) {
  const PointLists lists = ReadSets(
      "\n <set>\n  <name>Tour &amp; more</name>\n"
      "  <departure>\n   <name>Paris</name>\n   <lat>175883796</lat>\n   <lon>8467992</lon>\n"
      "  </departure>\n"
      "  <waypoint><lon>-7200000</lon><lat>-1800000</lat></waypoint>\n"
      "  <destination><lat> 174600000 </lat><lon>36</lon><name>End</name></destination>\n"
      " </set>\n");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "Tour & more");
  ASSERT_EQ(lists[0]->Count(), 3u);
  EXPECT_EQ(lists[0]->points[0].name, "Paris");
  EXPECT_EQ(lists[0]->points[0].latitude, 48.85661);
  EXPECT_EQ(lists[0]->points[0].longitude, 2.35222);
  EXPECT_EQ(lists[0]->points[1].name, "");
  EXPECT_EQ(lists[0]->points[1].latitude, -0.5);
  EXPECT_EQ(lists[0]->points[1].longitude, -2.0);
  EXPECT_EQ(lists[0]->points[2].name, "End");
  EXPECT_EQ(lists[0]->points[2].latitude, 48.5);
  EXPECT_EQ(lists[0]->points[2].longitude, 0.00001);
}

TEST(MapFactorReader, KeepsEmptySets) {
  const PointLists lists = ReadSets("<set/><set><name>b</name></set>");
  ASSERT_EQ(lists.size(), 2u);
  EXPECT_EQ(lists[0]->name, "");
  EXPECT_EQ(lists[0]->Count(), 0u);
  EXPECT_EQ(lists[1]->name, "b");
}

TEST(MapFactorReader, SetsOutsideOfTheRootAreIgnored) {
  const std::string set = "<set><departure><lat>3600000</lat></departure></set>";
  EXPECT_TRUE(Read("<a>" + set + "</a>").empty());
  // What follows the end of the root is outside again.
  EXPECT_EQ(Read("<a><routing_points>" + set + "</routing_points>" + set + "</a>").size(), 1u);
  EXPECT_EQ(ReadSets("<a>" + set + "</a>").size(), 1u);
}

TEST(MapFactorReader, StopsOutsideOfASetAreIgnored) {
  const std::string stop = "<waypoint><name>s</name><lat>3600000</lat></waypoint>";
  const PointLists lists = ReadSets(stop + "<name>n</name><set>" + stop + "</set>" + stop);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "");
  EXPECT_EQ(lists[0]->Count(), 1u);
}

TEST(MapFactorReader, TheLastNameOutsideOfAStopNamesTheRoute) {
  const PointLists lists = ReadSets(
      "<set><name>a</name><departure><name>stop</name></departure><b><name>c</name></b></set>");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "c");
  EXPECT_EQ(lists[0]->At(0).name, "stop");
}

TEST(MapFactorReader, NothingOfAStopLeaksIntoTheNext) {
  const PointLists lists = ReadSets(
      "<set><lat>1</lat><lon>1</lon><departure><name>a</name><lat>3600000</lat>"
      "<lon>3600000</lon></departure><lat>1</lat><destination/></set>");
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].latitude, 1.0);
  EXPECT_EQ(lists[0]->points[1].name, "");
  EXPECT_TRUE(lists[0]->points[1].IsNull());
}

TEST(MapFactorReader, AStopInAStop) {
  const PointLists lists = ReadSets(
      "<set><departure><name>a</name><waypoint><name>b</name></waypoint><name>c</name>"
      "<lat>3600000</lat></departure></set>");
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  EXPECT_EQ(lists[0]->points[0].name, "b");
  EXPECT_EQ(lists[0]->points[1].name, "");
  EXPECT_EQ(lists[0]->points[1].latitude, 1.0);
  EXPECT_EQ(lists[0]->name, "c");
}

TEST(MapFactorReader, ASetInASetTakesItsPlace) {
  const PointLists lists = ReadSets(
      "<set><name>outer</name><departure/><set><name>inner</name></set><name>late</name>"
      "<departure/></set>");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "inner");
  EXPECT_EQ(lists[0]->Count(), 0u);
}

TEST(MapFactorReader, ASetEndsTheStopAroundIt) {
  const PointLists lists = ReadSets(
      "<set><departure><set><name>inner</name></set></departure></set><set><name>b</name></set>");
  ASSERT_EQ(lists.size(), 2u);
  // The stop is open still, so that the name is its own.
  EXPECT_EQ(lists[0]->name, "");
  EXPECT_EQ(lists[1]->name, "b");
}

TEST(MapFactorReader, ARootInASetEndsWhatIsOpen) {
  const PointLists lists =
      ReadSets("<set><departure><routing_points/><name>n</name></departure></set><set/>");
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "n");
  ASSERT_EQ(lists[0]->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].name, "");
}

TEST(MapFactorReader, AFaultKeepsTheSetsThatAreComplete) {
  PointLists lists;
  EXPECT_EQ(ParseMapFactor("<routing_points><set><name>a</name></set><set><name>b</name>"
                           "<departure/></routing_points>",
                           lists, ContextInPlace()),
            kStatusFailure);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "a");
}

TEST(MapFactor, FileOfTwoPointsReadsTheSame) {
  const auto list = MakeList("Tour", MakePoint(48.5, 2.25, "a \"<&'>"),
                             MakePoint(-22.95192, -43.21049, "b"), MakePoint(48.1234567, 0, "c"));
  const PointLists lists = Read(MapFactorBytes(list));
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->name, "Tour");
  ASSERT_EQ(lists[0]->Count(), 3u);
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(lists[0]->points[i], list.points[i]);
  EXPECT_EQ(lists[0]->points[0].latitude, 48.5);
  EXPECT_EQ(lists[0]->points[1].longitude, -43.21049);
  EXPECT_EQ(lists[0]->points[2].latitude, 173244444 / 3600000.0);
  EXPECT_LT(lists[0]->points[2].latitude, 48.1234567);
}

}  // namespace
