#include "formats/xml/klicktel.h"

#include <string>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "tests/formats/written_bytes.h"
#include "tests/list_builder.h"

namespace {

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>";

std::string KrtBytes(const CGpsPointArray& list) { return BytesOf(WriteKlickTelBody, list); }

TEST(KlickTelWriter, WritesDecimalCommas) {
  const auto list = MakeList("lost", MakePoint(48.5, 9.0000004, "T\u00fcbingen", "lost", 341.0),
                             MakePoint(-22.95192, -43.2104906, ""));
  EXPECT_EQ(KrtBytes(list), kDeclaration +
                                "<pkDRoute><Stations>"
                                "<Station><City>T\u00fcbingen</City><Point>"
                                "<Latitude>48,500000</Latitude><Longitude>9,000000</Longitude>"
                                "</Point></Station>"
                                "<Station><City></City><Point>"
                                "<Latitude>-22,951920</Latitude><Longitude>-43,210491</Longitude>"
                                "</Point></Station>"
                                "</Stations><RouteOptions/></pkDRoute>");
}

TEST(KlickTelWriter, EscapesNamesAndLeavesTheirDots) {
  EXPECT_EQ(KrtBytes(MakeList("", MakePoint(1, 2, "St. \"<&'>, \u0141\U0001F600"))),
            kDeclaration +
                "<pkDRoute><Stations><Station>"
                "<City>St. &quot;&lt;&amp;&apos;&gt;, \u0141\U0001F600</City><Point>"
                "<Latitude>1,000000</Latitude><Longitude>2,000000</Longitude>"
                "</Point></Station></Stations><RouteOptions/></pkDRoute>");
}

TEST(KlickTelWriter, EmptyListHasStationsAndOptions) {
  EXPECT_EQ(KrtBytes(CGpsRoute()),
            kDeclaration + "<pkDRoute><Stations/><RouteOptions/></pkDRoute>");
}

TEST(KlickTelReader, ReadsStations) {
  PointLists lists;
  EXPECT_EQ(ParseKlickTel("<pkDRoute>\n<Stations>\n"
                          "<Station><Point><Longitude>9,057645</Longitude>"
                          "<Latitude>48,5</Latitude></Point><City>T\u00fcbingen, Markt</City>"
                          "</Station>\n"
                          "<Station><City>Ulm</City><Point><Latitude>48.401082</Latitude>"
                          "<Longitude>-9.9</Longitude></Point></Station>\n"
                          "<Station/>\n</Stations>\n<RouteOptions/></pkDRoute>",
                          lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(lists.size(), 1u);
  EXPECT_EQ(lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(lists[0]->name, "");
  ASSERT_EQ(lists[0]->Count(), 3u);
  EXPECT_EQ(lists[0]->points[0].name, "T\u00fcbingen, Markt");
  EXPECT_EQ(lists[0]->points[0].latitude, 48.5);
  EXPECT_EQ(lists[0]->points[0].longitude, 9.057645);
  EXPECT_EQ(lists[0]->points[1].name, "Ulm");
  EXPECT_EQ(lists[0]->points[1].latitude, 48.401082);
  EXPECT_EQ(lists[0]->points[1].longitude, -9.9);
  EXPECT_TRUE(lists[0]->points[2].IsNull());
  EXPECT_EQ(lists[0]->points[2].name, "");
}

// How many points a document with one station in these containers gives.
size_t PointsInside(const std::string& opening, const std::string& closing) {
  PointLists lists;
  EXPECT_EQ(ParseKlickTel(opening + "<Station><City>a</City></Station>" + closing, lists,
                          ContextInPlace()),
            kStatusSuccess);
  return lists.at(0)->Count();
}

TEST(KlickTelReader, EachOfThreeContainersHoldsStations) {
  EXPECT_EQ(PointsInside("<pkDRoute>", "</pkDRoute>"), 1u);
  EXPECT_EQ(PointsInside("<kDRoute>", "</kDRoute>"), 1u);
  EXPECT_EQ(PointsInside("<Stations>", "</Stations>"), 1u);
  EXPECT_EQ(PointsInside("<kDRoute><Stations>", "</Stations></kDRoute>"), 1u);
  EXPECT_EQ(PointsInside("<x><Stations>", "</Stations></x>"), 1u);
  EXPECT_EQ(PointsInside("<Route>", "</Route>"), 0u);
}

TEST(KlickTelReader, EveryCommaIsADecimalMark) {
  PointLists lists;
  ParseKlickTel(
      "<Stations><Station><Latitude>1,5,7</Latitude><Longitude>,25</Longitude></Station>"
      "</Stations>",
      lists, ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_EQ(lists[0]->points[0].latitude, 1.5);
  EXPECT_EQ(lists[0]->points[0].longitude, 0.25);
}

TEST(KlickTelReader, FieldsOutsideOfAStationDoNotCount) {
  PointLists lists;
  ParseKlickTel(
      "<Stations><City>x</City><Latitude>1,0</Latitude><Station/>"
      "<Longitude>2,0</Longitude></Stations>",
      lists, ContextInPlace());
  ASSERT_EQ(lists.at(0)->Count(), 1u);
  EXPECT_TRUE(lists[0]->points[0].IsNull());
  EXPECT_EQ(lists[0]->points[0].name, "");
}

TEST(KlickTel, RoundTripKeepsNamesAndPositions) {
  const auto list = MakeList("", MakePoint(48.5, 9.057645, "T\u00fcbingen <\"&'>"),
                             MakePoint(-22.95192, -43.21049, "R\u00edo, \u0141\u00f3d\u017a"));
  PointLists lists;
  EXPECT_EQ(ParseKlickTel(KrtBytes(list), lists, ContextInPlace()), kStatusSuccess);
  ASSERT_EQ(lists.at(0)->Count(), 2u);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(lists[0]->points[i], list.points[i]);
    EXPECT_EQ(lists[0]->points[i].latitude, list.points[i].latitude);
  }
}

}  // namespace
