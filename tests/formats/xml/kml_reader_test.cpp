#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "formats/xml/kml.h"
#include "tests/formats/xml/kml_reading.h"

namespace {

using namespace kml;
using std::string_literals::operator""s;

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

TEST_F(KmlReader, NamesAreComparedExactly) {
  EXPECT_TRUE(Read("<kml:Document><kml:Placemark><kml:name>a</kml:name><kml:Point>"
                   "<kml:coordinates>1,2</kml:coordinates></kml:Point></kml:Placemark>"
                   "</kml:Document>")
                  .empty());
  EXPECT_TRUE(Read("<document><Placemark>" + Coordinates("1,2") +
                   "</Placemark></document>"
                   "<Tour><gx:FlyTo><longitude>1</longitude></gx:FlyTo></Tour>")
                  .empty());
  EXPECT_TRUE(Read("<Folders><Placemark>" + Coordinates("1,2") + "</Placemark></Folders>").empty());
}

TEST_F(KmlReader, TheFirstNameNamesAList) {
  const std::string stop = "<Placemark><name>p</name>" + Coordinates("1,2") + "</Placemark>";
  EXPECT_EQ(Read("<Folder><name/><name>a</name><name>b</name>" + stop + "</Folder>")[0]->name, "a");
  EXPECT_EQ(Read("<Folder>" + stop + "<name>a</name></Folder>")[0]->name, "a");
  EXPECT_EQ(Read("<Folder><Style><name>a</name></Style>" + stop + "</Folder>")[0]->name, "a");
  EXPECT_EQ(Read("<Folder>" + stop + "</Folder>")[0]->name, "");
}

TEST_F(KmlReader, ListsComeInTheOrderOfTheirEnds) {
  const auto stop = [](const std::string& name) {
    return "<Placemark><name>" + name + "</name>" + Coordinates("1,2") + "</Placemark>";
  };
  Read("<Document><name>D</name>" + stop("d1") + "<Folder><name>A</name>" + stop("a1") +
       "<Folder><name>B</name>" + stop("b1") + "<Placemark><name>L</name><LineString>" +
       Coordinates("1,2,3") + "</LineString></Placemark></Folder>" + stop("a2") +
       "</Folder><gx:Tour><name>T</name><gx:FlyTo><name>t1</name><latitude>1</latitude>"
       "</gx:FlyTo></gx:Tour><Folder><name>empty</name></Folder>" +
       stop("d2") + "</Document>");
  ASSERT_EQ(m_lists.size(), 5u);
  const std::vector<std::pair<std::string, unsigned>> expected = {{"L", kKindTrack},
                                                                  {"B", kKindWaypoints},
                                                                  {"A", kKindWaypoints},
                                                                  {"T", kKindRoute},
                                                                  {"D", kKindWaypoints}};
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(m_lists[i]->name, expected[i].first);
    EXPECT_EQ(m_lists[i]->GetKind(), expected[i].second) << i;
  }
  ASSERT_EQ(m_lists[1]->Count(), 1u);
  EXPECT_EQ(m_lists[1]->points[0].name, "b1");
  ASSERT_EQ(m_lists[2]->Count(), 2u);
  EXPECT_EQ(m_lists[2]->points[0].name, "a1");
  EXPECT_EQ(m_lists[2]->points[1].name, "a2");
  ASSERT_EQ(m_lists[4]->Count(), 2u);
  EXPECT_EQ(m_lists[4]->points[0].name, "d1");
  EXPECT_EQ(m_lists[4]->points[1].name, "d2");
}

TEST_F(KmlReader, FormerListsOfTheCallerStay) {
  AddList<CGpsRoute>(m_lists).name = "before";
  EXPECT_EQ(ParseKml("<Document><Placemark>" + Coordinates("1,2") + "</Placemark></Document>",
                     m_lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->name, "before");
}

TEST_F(KmlReader, WithoutAContainerNothingCounts) {
  EXPECT_TRUE(Read("").empty());
  EXPECT_TRUE(Read("<name>n</name><Placemark><name>a</name>" + Coordinates("1,2") +
                   "</Placemark><Placemark><LineString>" + Coordinates("1,2,3 4,5,6") +
                   "</LineString></Placemark><gx:FlyTo><latitude>1</latitude></gx:FlyTo>")
                  .empty());
}

// The end of an element outside of all containers is not seen: what it was in goes on.
TEST_F(KmlReader, APlacemarkOutsideOfAContainerStaysOpen) {
  Read("<Placemark><name>lost</name></Placemark><Folder><name>n</name><Placemark><name>a</name>" +
       Coordinates("1,2") + "</Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->name, "");
  ASSERT_EQ(m_lists[0]->Count(), 1u);
  EXPECT_EQ(m_lists[0]->points[0].name, "a");
}

TEST_F(KmlReader, ALineOutsideOfAContainerStaysOpen) {
  const std::string stop = "<Placemark><name>a</name>" + Coordinates("1,2") + "</Placemark>";
  Read("<LineString/><Folder><name>F</name>" + stop + "<Placemark><name>L</name><LineString>" +
       Coordinates("1,2,3") + "</LineString></Placemark>" + stop + "</Folder>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(m_lists[0]->name, "");
  EXPECT_EQ(m_lists[1]->name, "");
  ASSERT_EQ(m_lists[1]->Count(), 1u);
  EXPECT_EQ(m_lists[1]->points[0].name, "a");
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

TEST_F(KmlReader, FolderInAPlacemarkTakesThePlaceOfItsParent) {
  Read("<Document><Placemark><name>a</name><Folder>" + Coordinates("1,2") +
       "<name>b</name></Folder></Placemark></Document>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->name, "");
  EXPECT_EQ(m_lists[0]->At(0).name, "b");
}

TEST_F(KmlReader, ReadsALine) {
  Read(
      "<Folder><name>F</name><Placemark><name>Way</name><LineString><tessellate>1</tessellate>"
      "<coordinates>\n  2.5,48.5,35.5\n  -43.25,-22.75,0 1,0,-3\n</coordinates></LineString>"
      "</Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(m_lists[0]->name, "Way");
  ASSERT_EQ(m_lists[0]->Count(), 3u);
  const CGpsPoint& first = m_lists[0]->points[0];
  EXPECT_EQ(first.longitude, 2.5);
  EXPECT_EQ(first.latitude, 48.5);
  EXPECT_EQ(first.altitude, 35.5);
  EXPECT_EQ(first.name, "");
  const CGpsPoint& second = m_lists[0]->points[1];
  EXPECT_EQ(second.longitude, -43.25);
  EXPECT_EQ(second.latitude, -22.75);
  EXPECT_EQ(second.altitude, 0.0);
  EXPECT_EQ(m_lists[0]->points[2].altitude, -3.0);
}

TEST_F(KmlReader, ALineWantsThreeParts) {
  EXPECT_TRUE(LineOf("2.35,48.85").empty());
  EXPECT_TRUE(LineOf("").empty());
  EXPECT_TRUE(LineOf("1,2,3,4").empty());
  EXPECT_TRUE(LineOf("1, 2, 3").empty());
  const std::vector<CGpsPoint> points = LineOf("1,2 3,4,5 6 7,8,9,10 ,1, 11,12,");
  ASSERT_EQ(points.size(), 3u);
  EXPECT_EQ(points[0].longitude, 3.0);
  EXPECT_EQ(points[0].latitude, 4.0);
  EXPECT_EQ(points[0].altitude, 5.0);
  EXPECT_EQ(points[1].longitude, 0.0);
  EXPECT_EQ(points[1].latitude, 1.0);
  EXPECT_EQ(points[2].longitude, 11.0);
  EXPECT_EQ(points[2].latitude, 12.0);
  EXPECT_EQ(points[2].altitude, 0.0);
}

TEST_F(KmlReader, OnlyBlankAndLineFeedPartTuples) {
  EXPECT_TRUE(LineOf("1,2,3\t4,5,6").empty());
  EXPECT_TRUE(LineOf("1,2,3&#13;4,5,6").empty());
  // The line ends of a file have become line feeds.
  EXPECT_EQ(LineOf("1,2,3\r\n4,5,6\r7,8,9").size(), 3u);
  const std::vector<CGpsPoint> points = LineOf("  \n\n 1,2,3  \n\t4,5,6\t");
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[1].longitude, 4.0);
}

TEST_F(KmlReader, PointsOfALineAtZeroAreSkipped) {
  EXPECT_TRUE(LineOf("0,0,0 0.0,-0,100 ,, x,y,z").empty());
  const std::vector<CGpsPoint> points = LineOf("0,0,0 0,1,0 1,0,0 0,0,5");
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[0].latitude, 1.0);
  EXPECT_EQ(points[1].longitude, 1.0);
}

TEST_F(KmlReader, ALineHasTheNameInFrontOfIt) {
  Read("<Folder><Placemark><LineString>" + Coordinates("1,2,3") +
       "</LineString><name>late</name></Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->name, "");
  Read("<Folder><Placemark><name>early</name><LineString><name>inner</name>" +
       Coordinates("1,2,3") + "</LineString></Placemark></Folder>");
  EXPECT_EQ(m_lists.at(0)->name, "early");
}

TEST_F(KmlReader, EveryLineIsATrack) {
  Read("<Folder><name>F</name><Placemark><name>M</name><MultiGeometry><LineString>" +
       Coordinates("1,2,3") + "</LineString><LineString>" + Coordinates("1,2") +
       "</LineString><LineString>" + Coordinates("4,5,6") + Coordinates("7,8,9") +
       "</LineString><Point>" + Coordinates("10,11") +
       "</Point></MultiGeometry></Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 4u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(m_lists[i]->name, "M");
    ASSERT_EQ(m_lists[i]->Count(), 1u);
    EXPECT_EQ(m_lists[i]->points[0].longitude, 1.0 + 3.0 * static_cast<double>(i));
  }
  EXPECT_EQ(m_lists[3]->name, "F");
  EXPECT_EQ(m_lists[3]->At(0).name, "M");
  EXPECT_EQ(m_lists[3]->At(0).longitude, 10.0);
}

TEST_F(KmlReader, LongNamesAreNotRepeatedWithoutEnd) {
  std::string lines;
  for (int i = 0; i < 10'000; ++i) lines += Coordinates("1,2,3");
  Read("<Folder><Placemark><name>" + std::string(1'000'000, 'n') + "</name><LineString>" +
       Coordinates("") + lines + "</LineString></Placemark><Placemark><name>" +
       std::string(64, 'x') + "</name><LineString>" + lines + "</LineString></Placemark></Folder>");
  ASSERT_EQ(m_lists.size(), 20'000u);
  // The name four times and 2^20 bytes more are room for five copies.
  EXPECT_EQ(m_lists[4]->name.size(), 1'000'000u);
  for (size_t i = 5; i < 10'000; ++i) ASSERT_EQ(m_lists[i]->name, "");
  EXPECT_EQ(m_lists[19'999]->name.size(), 64u);
}

TEST_F(KmlReader, ALineWithoutAPlacemarkHasNoName) {
  Read("<Folder><Placemark><name>a</name>" + Coordinates("1,2") + "</Placemark><LineString>" +
       Coordinates("1,2,3") + "</LineString></Folder>");
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(m_lists[0]->name, "");
}

TEST_F(KmlReader, ATourIsARoute) {
  Read(
      "<gx:Tour><name>Flight</name><gx:Playlist>"
      "<gx:FlyTo><gx:duration>5.0</gx:duration><gx:flyToMode>bounce</gx:flyToMode>"
      "<name>Start</name><description>not kept</description><Camera>"
      "<longitude>2.5</longitude><latitude>48.5</latitude><altitude>1200</altitude>"
      "<heading>90</heading></Camera></gx:FlyTo>"
      "<gx:Wait><gx:duration>1</gx:duration></gx:Wait>"
      "<gx:FlyTo><LookAt><latitude>-22.75</latitude><longitude>-43.25</longitude></LookAt>"
      "</gx:FlyTo><gx:FlyTo><gx:duration>2</gx:duration></gx:FlyTo>"
      "</gx:Playlist></gx:Tour>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindRoute);
  EXPECT_EQ(m_lists[0]->name, "Flight");
  ASSERT_EQ(m_lists[0]->Count(), 2u);
  const CGpsPoint& first = m_lists[0]->points[0];
  EXPECT_EQ(first.name, "Start");
  EXPECT_EQ(first.comment, "");
  EXPECT_EQ(first.longitude, 2.5);
  EXPECT_EQ(first.latitude, 48.5);
  EXPECT_EQ(first.altitude, 1200.0);
  const CGpsPoint& second = m_lists[0]->points[1];
  EXPECT_EQ(second.name, "");
  EXPECT_EQ(second.longitude, -43.25);
  EXPECT_EQ(second.latitude, -22.75);
  EXPECT_EQ(second.altitude, 0.0);
}

TEST_F(KmlReader, AFlightInAFolderIsAPointOfIt) {
  Read("<Folder><name>F</name><gx:FlyTo><name>a</name><latitude>1</latitude>" +
       Coordinates("5,6,7") + "</gx:FlyTo></Folder>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindWaypoints);
  EXPECT_EQ(m_lists[0]->name, "F");
  EXPECT_EQ(m_lists[0]->At(0).name, "a");
  EXPECT_EQ(m_lists[0]->At(0).latitude, 1.0);
  EXPECT_EQ(m_lists[0]->At(0).longitude, 0.0);
}

TEST_F(KmlReader, APlacemarkComesBeforeAFlight) {
  Read("<gx:Tour><gx:FlyTo><Placemark><name>p</name><longitude>9</longitude>" + Coordinates("1,2") +
       "</Placemark><name>f</name><latitude>3</latitude></gx:FlyTo></gx:Tour>");
  ASSERT_EQ(m_lists.at(0)->Count(), 2u);
  EXPECT_EQ(m_lists[0]->points[0].name, "p");
  EXPECT_EQ(m_lists[0]->points[0].longitude, 1.0);
  EXPECT_EQ(m_lists[0]->points[1].name, "f");
  EXPECT_EQ(m_lists[0]->points[1].longitude, 0.0);
  EXPECT_EQ(m_lists[0]->points[1].latitude, 3.0);
}

// A file as Google Earth saves it.
TEST_F(KmlReader, ReadsAFileOfGoogleEarth) {
  EXPECT_EQ(ParseKml("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<kml xmlns=\"http://www.opengis.net/kml/2.2\" "
                     "xmlns:gx=\"http://www.google.com/kml/ext/2.2\" "
                     "xmlns:kml=\"http://www.opengis.net/kml/2.2\" "
                     "xmlns:atom=\"http://www.w3.org/2005/Atom\">\n"
                     "<Document>\n"
                     "\t<name>Alps.kml</name>\n"
                     "\t<Style id=\"s_ylw-pushpin\">\n\t\t<IconStyle>\n\t\t\t<scale>1.1</scale>\n"
                     "\t\t\t<Icon>\n\t\t\t\t<href>http://maps.google.com/pushpin.png</href>\n"
                     "\t\t\t</Icon>\n\t\t</IconStyle>\n\t</Style>\n"
                     "\t<StyleMap id=\"m_ylw-pushpin\">\n\t\t<Pair>\n\t\t\t<key>normal</key>\n"
                     "\t\t\t<styleUrl>#s_ylw-pushpin</styleUrl>\n\t\t</Pair>\n\t</StyleMap>\n"
                     "\t<Folder>\n\t\t<name>Passes</name>\n\t\t<open>1</open>\n"
                     "\t\t<Placemark>\n\t\t\t<name>Col de l'Iseran</name>\n"
                     "\t\t\t<description><![CDATA[2764 m<br>]]></description>\n"
                     "\t\t\t<LookAt>\n\t\t\t\t<longitude>7.03</longitude>\n"
                     "\t\t\t\t<latitude>45.41</latitude>\n\t\t\t</LookAt>\n"
                     "\t\t\t<styleUrl>#m_ylw-pushpin</styleUrl>\n"
                     "\t\t\t<Point>\n\t\t\t\t<gx:drawOrder>1</gx:drawOrder>\n"
                     "\t\t\t\t<coordinates>7.031389,45.416944,0</coordinates>\n\t\t\t</Point>\n"
                     "\t\t</Placemark>\n"
                     "\t\t<Placemark>\n\t\t\t<name>Way up</name>\n"
                     "\t\t\t<LineString>\n\t\t\t\t<tessellate>1</tessellate>\n"
                     "\t\t\t\t<coordinates>\n"
                     "\t\t\t\t\t6.974,45.449,0 6.99,45.44,0 7.0313,45.4169,0 \n"
                     "\t\t\t\t</coordinates>\n\t\t\t</LineString>\n\t\t</Placemark>\n"
                     "\t</Folder>\n</Document>\n</kml>\n",
                     m_lists, ContextInPlace()),
            kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 2u);
  EXPECT_EQ(m_lists[0]->GetKind(), kKindTrack);
  EXPECT_EQ(m_lists[0]->name, "Way up");
  ASSERT_EQ(m_lists[0]->Count(), 3u);
  EXPECT_EQ(m_lists[0]->points[0].longitude, 6.974);
  EXPECT_EQ(m_lists[1]->name, "Passes");
  ASSERT_EQ(m_lists[1]->Count(), 1u);
  EXPECT_EQ(m_lists[1]->points[0].name, "Col de l'Iseran");
  EXPECT_EQ(m_lists[1]->points[0].comment, "2764 m<br>");
  EXPECT_EQ(m_lists[1]->points[0].longitude, 7.031389);
  EXPECT_EQ(m_lists[1]->points[0].latitude, 45.416944);
}

TEST_F(KmlReader, OtherKindsOfXmlGiveNothing) {
  EXPECT_EQ(ParseKml("<gpx><wpt lat=\"1\" lon=\"2\"><name>a</name></wpt></gpx>", m_lists,
                     ContextInPlace()),
            kStatusSuccess);
  EXPECT_TRUE(m_lists.empty());
}

TEST_F(KmlReader, WhiteSpaceBehindTheLastTupleIsNothing) {
  ConversionContext context;
  const ConversionScope scope(context);
  LineOf("\n\t\t1,2,3 \n\t\t4,5,6\r\n\t\t");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->Count(), 2u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
}

TEST_F(KmlReader, ARecordedTrackIsATrack) {
  for (const std::string prefix : {"gx:", ""}) {
    m_lists.clear();
    Read("<Folder><Placemark><name>Morning</name><" + prefix +
         "Track><when>2026-05-01T08:00:00Z</when><when>2026-05-01T08:00:05Z</when><" + prefix +
         "coord>2.35222 48.85661 35.5</" + prefix + "coord><" + prefix + "coord/><" + prefix +
         "coord>\n -43.21049\t-22.95192 </" + prefix + "coord><name>inside</name></" + prefix +
         "Track></Placemark></Folder>");
    ASSERT_EQ(m_lists.size(), 1u);
    const CGpsPointArray& track = *m_lists[0];
    EXPECT_EQ(track.GetKind(), kKindTrack);
    EXPECT_EQ(track.name, "Morning");
    ASSERT_EQ(track.Count(), 2u);
    EXPECT_EQ(track.points[0].longitude, 2.35222);
    EXPECT_EQ(track.points[0].latitude, 48.85661);
    EXPECT_EQ(track.points[0].altitude, 35.5);
    EXPECT_EQ(track.points[1].longitude, -43.21049);
    EXPECT_EQ(track.points[1].latitude, -22.95192);
    EXPECT_EQ(track.points[1].altitude, 0.0);
  }
}

TEST_F(KmlReader, RecordedTracksOfOnePlacemark) {
  Read(
      "<Document><Placemark><name>Two days</name><gx:MultiTrack><gx:interpolate>0"
      "</gx:interpolate><gx:Track><gx:coord>1 2 3</gx:coord></gx:Track><gx:Track/><gx:Track>"
      "<gx:coord>0 0 5</gx:coord><gx:coord>4 5 6</gx:coord></gx:Track></gx:MultiTrack></Placemark>"
      "<Placemark><name>Stop</name><Point>" +
      Coordinates("7,8") + "</Point></Placemark></Document>");
  ASSERT_EQ(m_lists.size(), 3u);
  EXPECT_EQ(m_lists[0]->name, "Two days");
  EXPECT_EQ(m_lists[0]->points[0].longitude, 1.0);
  ASSERT_EQ(m_lists[1]->Count(), 1u);
  EXPECT_EQ(m_lists[1]->points[0].longitude, 4.0);
  ASSERT_EQ(m_lists[2]->Count(), 1u);
  EXPECT_EQ(m_lists[2]->points[0].name, "Stop");
}

TEST_F(KmlReader, ARecordedTrackOutsideOfAContainerIsNothing) {
  Read(
      "<kml><Placemark><gx:Track><gx:coord>1 2 3</gx:coord></gx:Track></Placemark><Folder>"
      "<Placemark><name>a</name>" +
      Coordinates("1,2") + "</Placemark></Folder></kml>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->points[0].name, "a");
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

TEST_F(KmlReader, ReadsWhatOtherProgramsDeclare) {
  EXPECT_EQ(
      ParseKml("<?xml version=\"1.0\" encoding=\"windows-1251\"?><kml><Folder><Placemark><name>"
               "\xCC\xEE\xF1\xEA\xE2\xE0</name>" +
                   Coordinates("37.6,55.7") + "</Placemark></Folder></kml>",
               m_lists, ContextInPlace()),
      kStatusSuccess);
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->points[0].name, "Москва");
}

TEST_F(KmlReader, TellsWhatItPassesOver) {
  ConversionContext context;
  const ConversionScope scope(context);
  LineOf("1,2 3,4,5 6\t7 0,0,0");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 2u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kPointWithoutPosition), 1u);
}

}  // namespace
