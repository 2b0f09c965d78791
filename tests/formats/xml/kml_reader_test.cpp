// Containers and their lists, and whole files.

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

TEST_F(KmlReader, FolderInAPlacemarkTakesThePlaceOfItsParent) {
  Read("<Document><Placemark><name>a</name><Folder>" + Coordinates("1,2") +
       "<name>b</name></Folder></Placemark></Document>");
  ASSERT_EQ(m_lists.size(), 1u);
  EXPECT_EQ(m_lists[0]->name, "");
  EXPECT_EQ(m_lists[0]->At(0).name, "b");
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

}  // namespace
