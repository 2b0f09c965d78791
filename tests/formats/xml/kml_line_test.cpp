// What leads from point to point: lines, recorded tracks, tours.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/conversion_context.h"
#include "tests/formats/xml/kml_reading.h"

namespace {

using namespace kml;

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

TEST_F(KmlReader, WhiteSpaceBehindTheLastTupleIsNothing) {
  ConversionContext context;
  const ConversionScope scope(context);
  LineOf("\n\t\t1,2,3 \n\t\t4,5,6\r\n\t\t");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->Count(), 2u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 0u);
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

TEST_F(KmlReader, TellsWhatItPassesOver) {
  ConversionContext context;
  const ConversionScope scope(context);
  LineOf("1,2 3,4,5 6\t7 0,0,0");
  EXPECT_EQ(context.notes.Count(ConversionNote::kLinePassedOver), 2u);
  EXPECT_EQ(context.notes.Count(ConversionNote::kPointWithoutPosition), 1u);
}

}  // namespace
