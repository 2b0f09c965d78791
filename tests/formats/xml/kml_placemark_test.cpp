// Placemarks with a position, or several.

#include <string>

#include <gtest/gtest.h>

#include "tests/formats/xml/kml_reading.h"

namespace {

using namespace kml;

TEST_F(KmlReader, ReadsPlacemarks) {
  Read(
      "<Document><name>Trip</name><Placemark><name>Paris</name><Snippet>Gare</Snippet>"
      "<Point><coordinates>2.35222,48.85661,35.5</coordinates></Point></Placemark>"
      "<Placemark><name>Rio</name><Point><coordinates>-43.21049,-22.95192</coordinates></Point>"
      "</Placemark></Document>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindWaypoints);
  EXPECT_EQ(m_lists[0]->name, "Trip");
  ASSERT_EQ(m_lists[0]->Count(), 2u);
  const CGpsPoint& paris = m_lists[0]->points[0];
  EXPECT_EQ(paris.name, "Paris");
  EXPECT_EQ(paris.comment, "Gare");
  EXPECT_EQ(paris.latitude, 48.85661);
  EXPECT_EQ(paris.longitude, 2.35222);
  EXPECT_EQ(paris.altitude, 35.5);
  const CGpsPoint& rio = m_lists[0]->points[1];
  EXPECT_EQ(rio.name, "Rio");
  EXPECT_EQ(rio.comment, "");
  EXPECT_EQ(rio.latitude, -22.95192);
  EXPECT_EQ(rio.longitude, -43.21049);
  EXPECT_EQ(rio.altitude, 0.0);
}

TEST_F(KmlReader, CoordinatesOfAPoint) {
  // Blanks around the numbers don't matter.
  CGpsPoint point = PlacemarkOf(Coordinates("\n\t 2.5 ,\t48.5\n, 7 \n"));
  EXPECT_EQ(point.longitude, 2.5);
  EXPECT_EQ(point.latitude, 48.5);
  EXPECT_EQ(point.altitude, 7.0);
  // A fourth part takes the altitude away.
  point = PlacemarkOf(Coordinates("1,2,3,4"));
  EXPECT_EQ(point.longitude, 1.0);
  EXPECT_EQ(point.latitude, 2.0);
  EXPECT_EQ(point.altitude, 0.0);
  // Empty parts count.
  point = PlacemarkOf(Coordinates(",2,"));
  EXPECT_EQ(point.longitude, 0.0);
  EXPECT_EQ(point.latitude, 2.0);
  EXPECT_EQ(point.altitude, 0.0);
  // One part changes nothing, and neither does none.
  point = PlacemarkOf(Coordinates("1,2,3") + Coordinates("5") + "<coordinates/>");
  EXPECT_EQ(point.longitude, 1.0);
  EXPECT_EQ(point.latitude, 2.0);
  EXPECT_EQ(point.altitude, 3.0);
  // Two parts leave the altitude as it is.
  point = PlacemarkOf(Coordinates("1,2,3") + Coordinates("5,6"));
  EXPECT_EQ(point.longitude, 5.0);
  EXPECT_EQ(point.latitude, 6.0);
  EXPECT_EQ(point.altitude, 3.0);
}

TEST_F(KmlReader, APolygonGivesItsFirstCorner) {
  const CGpsPoint point = PlacemarkOf(
      "<name>Field</name><Polygon><outerBoundaryIs><LinearRing><coordinates>\n"
      "  1,2,3\n  4,5,6\n  1,2,3\n</coordinates></LinearRing></outerBoundaryIs></Polygon>");
  EXPECT_EQ(point.name, "Field");
  EXPECT_EQ(point.longitude, 1.0);
  EXPECT_EQ(point.latitude, 2.0);
  EXPECT_EQ(point.altitude, 0.0);
}

TEST_F(KmlReader, SnippetAndDescription) {
  const std::string point = Coordinates("1,2");
  EXPECT_EQ(PlacemarkOf(point + "<description>d</description>").comment, "d");
  EXPECT_EQ(PlacemarkOf(point + "<Snippet>s</Snippet>").comment, "s");
  EXPECT_EQ(PlacemarkOf(point + "<Snippet>s</Snippet><description>d</description>").comment, "s");
  EXPECT_EQ(PlacemarkOf(point + "<description>d</description><Snippet>s</Snippet>").comment, "s");
  EXPECT_EQ(PlacemarkOf(point + "<description>d</description><Snippet/>").comment, "");
  EXPECT_EQ(PlacemarkOf(point + "<description>c</description><description>d</description>").comment,
            "c");
  EXPECT_EQ(PlacemarkOf(point + "<Snippet/><description>d</description>").comment, "d");
  EXPECT_EQ(PlacemarkOf(point + "<snippet>s</snippet><kml:Snippet>k</kml:Snippet>").comment, "");
}

TEST_F(KmlReader, TextIsThatSinceTheLastStartTag) {
  const CGpsPoint point =
      PlacemarkOf("<name>A &amp; <![CDATA[<B>]]> C</name><description>x<b>y</b>z</description>" +
                  Coordinates("1,2"));
  EXPECT_EQ(point.name, "A & <B> C");
  EXPECT_EQ(point.comment, "yz");
}

TEST_F(KmlReader, AViewOfAPlacemarkIsNoPosition) {
  const CGpsPoint point = PlacemarkOf(Coordinates("1,2,3") +
                                      "<LookAt><longitude>4</longitude><latitude>5</latitude>"
                                      "<altitude>6</altitude></LookAt>");
  EXPECT_EQ(point.longitude, 1.0);
  EXPECT_EQ(point.latitude, 2.0);
  EXPECT_EQ(point.altitude, 3.0);
}

TEST_F(KmlReader, APlacemarkAtZeroDisappears) {
  Read("<Folder><Placemark><name>zero</name>" + Coordinates("0,0,5") +
       "</Placemark><Placemark><name>a</name>" + Coordinates("0,1") +
       "</Placemark><Placemark><name>nothing</name></Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  ASSERT_EQ(m_lists[0]->Count(), 1u);
  EXPECT_EQ(m_lists[0]->points[0].name, "a");
  EXPECT_TRUE(Read("<Folder><Placemark>" + Coordinates("0,0") + "</Placemark></Folder>").empty());
}

TEST_F(KmlReader, NothingOfAPlacemarkLeaksIntoTheNext) {
  Read("<Folder><Placemark><name>a</name><description>d</description>" + Coordinates("1,2,3") +
       "</Placemark><Placemark>" + Coordinates("4,5") +
       "</Placemark><Placemark><name>b</name></Placemark></Folder>");
  ASSERT_EQ(m_lists.at(0)->Count(), 2u);
  const CGpsPoint& second = m_lists[0]->points[1];
  EXPECT_EQ(second.name, "");
  EXPECT_EQ(second.comment, "");
  EXPECT_EQ(second.altitude, 0.0);
}

TEST_F(KmlReader, PlacemarkInAPlacemarkIsOnePoint) {
  Read("<Folder><Placemark><name>a</name>" + Coordinates("1,2") + "<Placemark><name>b</name>" +
       Coordinates("3,4") + "</Placemark></Placemark><name>F</name></Folder>");
  ASSERT_EQ(m_lists.at(0)->Count(), 1u);
  EXPECT_EQ(m_lists[0]->points[0].name, "b");
  EXPECT_EQ(m_lists[0]->points[0].longitude, 3.0);
  EXPECT_EQ(m_lists[0]->name, "F");
}

TEST_F(KmlReader, EveryPointOfAPlacemarkIsAStop) {
  Read(
      "<Folder><Placemark><name>Gates</name><description>of the park</description><MultiGeometry>"
      "<Point>" +
      Coordinates("1,2,3") + "</Point><MultiGeometry><Point>" + Coordinates("4,5") +
      "</Point></MultiGeometry><LineString>" + Coordinates("1,1,1") + "</LineString><Point>" +
      Coordinates("6,7,8") + "</Point></MultiGeometry></Placemark><Placemark>" +
      Coordinates("9,9") + "</Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
  const CGpsPointArray& stops = *m_lists[1];
  ASSERT_EQ(stops.Count(), 4u);
  const double longitudes[] = {1, 4, 6};
  const double altitudes[] = {3, 0, 8};
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(stops.At(i).name, "Gates");
    EXPECT_EQ(stops.At(i).comment, "of the park");
    EXPECT_EQ(stops.At(i).longitude, longitudes[i]);
    EXPECT_EQ(stops.At(i).altitude, altitudes[i]);
  }
  EXPECT_EQ(stops.At(3).name, "");
  EXPECT_EQ(stops.At(3).longitude, 9.0);
}

TEST_F(KmlReader, APointGoesBeforeTheCornerOfAnArea) {
  const std::string area = "<Polygon><outerBoundaryIs><LinearRing>" +
                           Coordinates("5,5,0 6,6,0 7,5,0") +
                           "</LinearRing></outerBoundaryIs></Polygon>";
  const std::string point = "<Point>" + Coordinates("1,2,3") + "</Point>";
  for (const std::string& geometries : {point + area, area + point}) {
    m_lists.clear();
    Read("<Folder><Placemark><MultiGeometry>" + geometries +
         "</MultiGeometry></Placemark></Folder>");
    ASSERT_EQ(m_lists.size(), 1u);
    ASSERT_EQ(m_lists[0]->Count(), 1u);
    EXPECT_EQ(m_lists[0]->points[0].longitude, 1.0);
    EXPECT_EQ(m_lists[0]->points[0].altitude, 3.0);
  }
}

TEST_F(KmlReader, LongTextsAreNotRepeatedForEveryPointWithoutEnd) {
  std::string points;
  for (int i = 0; i < 1000; ++i) points += "<Point>" + Coordinates("1,2") + "</Point>";
  Read("<Folder><Placemark><name>n</name><description>" + std::string(1'000'000, 'd') +
       "</description><MultiGeometry>" + points + "</MultiGeometry></Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  ASSERT_EQ(m_lists[0]->Count(), 1000u);
  size_t described = 0;
  for (const CGpsPoint& point : m_lists[0]->points) {
    EXPECT_EQ(point.name, "n");
    if (!point.comment.empty()) ++described;
  }
  // Four times the text and 2^20 bytes more, and the text itself.
  EXPECT_EQ(described, 6u);
}

}  // namespace
