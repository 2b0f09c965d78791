// What a source holds that no itinerary can: the report says so by kind.

#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"
#include "tests/zip_bytes.h"

namespace {

// What the report says of the source, without its path; empty when it says nothing.
std::string PassedOver(const std::string& name, const std::string& content,
                       const std::string& environment = "LC_ALL=C") {
  const TemporaryFolder folder;
  folder.Put(name, content);
  const ProgramResult result =
      RunConverter({folder.PathTo(name), "gpx", "-o", folder.PathTo("out.gpx")}, environment);
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::string start = folder.PathTo(name);
  const bool isFrench = environment.find("fr") != std::string::npos;
  const size_t line = result.errors.rfind(start + (isFrench ? "\u00A0: " : ": "));
  const bool hasOtherLists =
      line != std::string::npos && result.errors.find(start + ": taken: ") == line;
  if (line == std::string::npos || hasOtherLists) {
    EXPECT_NE(result.errors.find(hasOtherLists ? ": taken: " : ": checked: "), std::string::npos)
        << result.errors;
    return {};
  }
  EXPECT_EQ(result.errors.find("checked"), std::string::npos) << result.errors;
  const size_t end = result.errors.find('\n', line);
  return result.errors.substr(line + start.size(), end - line - start.size());
}

std::string Gpx(const std::string& point) {
  return "<gpx><rte><rtept lat=\"1\" lon=\"2\"><name>a</name>" + point + "</rtept></rte></gpx>";
}

std::string Kml(const std::string& placemark) {
  return "<kml><Document><Placemark><name>a</name>" + placemark +
         "<Point><coordinates>2,1</coordinates></Point></Placemark></Document></kml>";
}

TEST(PassedOver, NothingOfAPlainFile) {
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<ele>3</ele><cmt>b</cmt><desc>b</desc>")), "");
  EXPECT_EQ(PassedOver("a.kml", Kml("<styleUrl>#s</styleUrl><Style><IconStyle/></Style>"
                                    "<Snippet>b</Snippet><description>b</description>")),
            "");
  EXPECT_EQ(PassedOver("a.osm",
                       "<osm><node id=\"1\" lat=\"1\" lon=\"2\"><tag k=\"name\" v=\"a\"/>"
                       "</node><way id=\"2\"><nd ref=\"1\"/></way></osm>"),
            "");
  EXPECT_EQ(PassedOver("a.plt",
                       "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is "
                       "in Feet\r\nReserved 3\r\n0,2,255,a,1,0,0,255\r\n1\r\n1,2,0,3,,,\r\n"),
            "");
}

TEST(PassedOver, TimesSymbolsAndMeasurementsOfGpx) {
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<time>2026-05-01T08:00:00Z</time><sym>Flag</sym>"
                                    "<type>Stop</type><hdop>1.5</hdop><link href=\"x\"/>")),
            ": passed over: 1 time, 2 symbols, 1 reading of the receiver, 1 link");
}

TEST(PassedOver, WhatIsAboutTheFileIsNoLoss) {
  EXPECT_EQ(PassedOver("a.gpx",
                       "<gpx><metadata><name>n</name><desc>d</desc><link href=\"x\"/><time>2026"
                       "</time></metadata><rte><rtept lat=\"1\" lon=\"2\"/></rte></gpx>"),
            "");
}

TEST(PassedOver, TextsOfGpx) {
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<cmt>b</cmt><desc>c</desc>")),
            ": passed over: 1 further description");
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<desc>c</desc><cmt>b</cmt>")),
            ": passed over: 1 further description");
  EXPECT_EQ(PassedOver("a.gpx",
                       "<gpx><rte><name>n</name><desc>of the route</desc><rtept lat=\"1\" "
                       "lon=\"2\"/></rte></gpx>"),
            ": passed over: 1 further description");
}

TEST(PassedOver, ExtensionsOfGpx) {
  EXPECT_EQ(
      PassedOver("a.gpx", Gpx("<extensions><gpxx:RoutePointExtension><gpxx:Subclass>00"
                              "</gpxx:Subclass><gpxx:rpt lat=\"1\" lon=\"1\"/><gpxx:rpt "
                              "lat=\"1\" lon=\"2\"/></gpxx:RoutePointExtension></extensions>")),
      ": passed over: 2 shaping points");
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<extensions><gpxtpx:hr>99</gpxtpx:hr></extensions>")),
            ": passed over: 1 extension of another program");
  EXPECT_EQ(PassedOver("a.gpx", Gpx("<extensions/>")), "");
}

TEST(PassedOver, SegmentsOfGpx) {
  const std::string segment = "<trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg>";
  EXPECT_EQ(PassedOver("a.gpx", "<gpx><trk>" + segment + "</trk></gpx>"), "");
  EXPECT_EQ(PassedOver("a.gpx", "<gpx><trk>" + segment + segment + segment + "</trk></gpx>"),
            ": passed over: 2 breaks in tracks");
}

TEST(PassedOver, WhiteSpaceBehindTheLastTupleIsNothing) {
  EXPECT_EQ(PassedOver("a.kml",
                       "<kml><Document><Placemark><LineString><coordinates>\n 1,2,3 2,3,4\r\n\t "
                       "</coordinates></LineString></Placemark></Document></kml>"),
            "");
}

TEST(PassedOver, AreasOverlaysLinksAndTimesOfKml) {
  EXPECT_EQ(PassedOver("a.kml",
                       "<kml><Document><NetworkLink/><GroundOverlay/><Placemark><TimeSpan><begin>1"
                       "</begin><end>2</end></TimeSpan><ExtendedData><Data><value>3</value></Data>"
                       "</ExtendedData><MultiGeometry><Point><coordinates>2,1</coordinates></Point>"
                       "<Polygon><outerBoundaryIs><LinearRing><coordinates>1,1 2,2 3,1"
                       "</coordinates></LinearRing></outerBoundaryIs></Polygon></MultiGeometry>"
                       "</Placemark><Placemark/></Document></kml>"),
            ": passed over: 1 point without a position, 2 times, 1 further detail, 1 area, "
            "1 picture on the map, 1 further document");
  EXPECT_EQ(PassedOver("a.kml", Kml("<Snippet>b</Snippet><description>c</description>")),
            ": passed over: 1 further description");
}

TEST(PassedOver, TimesOfARecordedTrack) {
  EXPECT_EQ(PassedOver("a.kml",
                       "<kml><Document><Placemark><description>d</description><gx:Track><when>1"
                       "</when><when>2</when><gx:coord>1 2 3</gx:coord><gx:coord>2 3 4</gx:coord>"
                       "</gx:Track></Placemark></Document></kml>"),
            ": passed over: 2 times, 1 further description");
}

TEST(PassedOver, OtherDocumentsOfAnArchive) {
  EXPECT_EQ(PassedOver("a.kmz", ZipBytes({{"a.kml", Kml("")},
                                          {"doc.kml", Kml("")},
                                          {"b.kml", Kml("")},
                                          {"c.png", "picture"}})),
            ": passed over: 2 further documents");
}

TEST(PassedOver, TagsAndRelationsOfOsm) {
  EXPECT_EQ(PassedOver("a.osm",
                       "<osm><node id=\"1\" lat=\"1\" lon=\"2\"><tag k=\"shop\" v=\"a\"/></node>"
                       "<way id=\"2\"><nd ref=\"1\"/><tag k=\"highway\" v=\"b\"/></way>"
                       "<relation id=\"3\"/></osm>"),
            ": passed over: 2 further details, 1 relation");
}

TEST(PassedOver, DaysOfOziExplorer) {
  EXPECT_EQ(PassedOver("a.plt",
                       "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet"
                       "\r\nReserved 3\r\n0,2,255,a,1,0,0,255\r\n2\r\n1,2,0,3,39640.9,a,b\r\n"
                       "2,3,0,3,39640.91,a,b\r\n"),
            ": passed over: 2 times");
}

TEST(PassedOver, TextBehindTheColumnsOfALayout) {
  EXPECT_EQ(PassedOver("a.csv", "1,2,a\r\n3,4,b,,\r\n"), "");
  EXPECT_EQ(PassedOver("a.csv", "lat,lon,name,tel\r\n1,2,a,123\r\n3,4,b,,\r\n"),
            ": passed over: 1 further detail");
}

TEST(PassedOver, NumbersAndFormsAreThoseOfTheLanguage) {
  std::string gpx = "<gpx><trk><trkseg>";
  for (int i = 0; i < 2412; ++i) gpx += "<trkpt lat=\"1\" lon=\"2\"><time>t</time></trkpt>";
  gpx += "<trkpt lat=\"1\" lon=\"2\"><sym>s</sym></trkpt></trkseg></trk></gpx>";
  EXPECT_EQ(PassedOver("a.gpx", gpx), ": passed over: 2,412 times, 1 symbol");
  EXPECT_EQ(PassedOver("a.gpx", gpx, "LC_ALL=de_DE.UTF-8"),
            ": übergangen: 2.412 Zeitangaben, 1 Symbol");
  EXPECT_EQ(PassedOver("a.gpx", gpx, "LC_ALL=fr_FR.UTF-8"),
            "\u00A0: laissé de côté\u00A0: 2\u202f412 heures, 1 symbole");
  EXPECT_EQ(PassedOver("a.gpx", gpx, "LC_ALL=nl_NL.UTF-8"),
            ": overgeslagen: 2.412 tijden, 1 symbool");
}

TEST(PassedOver, CountsAsALossAndStandsInJson) {
  const TemporaryFolder folder;
  folder.Put("a.gpx", Gpx("<time>t</time><sym>s</sym>"));
  const ProgramResult result = RunConverter(
      {folder.PathTo("a.gpx"), "gpx", "--json", "--strict", "-o", folder.PathTo("out.gpx")});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.output.find("\"losses\": true"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("\"passedOver\": {\"times\": 1, \"symbols\": 1}"), std::string::npos)
      << result.output;
}

}  // namespace
