// Files as other programs write them, through the command line.

#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"
#include "tests/zip_bytes.h"

namespace {

// What a conversion of a file with this content makes of it.
std::string Converted(const std::string& name, const std::string& content, const std::string& key) {
  const TemporaryFolder folder;
  folder.Put(name, content);
  const ProgramResult result =
      RunConverter({folder.PathTo(name), key, "--quiet", "-o", folder.PathTo("out")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  return folder.Get("out");
}

const std::string kPlaces =
    "<kml><Document><Placemark><name>Paris</name><Point><coordinates>2.35222,48.85661,35"
    "</coordinates></Point></Placemark></Document></kml>";

TEST(ForeignFiles, AnArchiveOfPlacesIsReadAsTheDocumentInIt) {
  const std::string archive =
      ZipBytes({{"files/", ""}, {"files/a.png", "picture"}, {"doc.kml", kPlaces}});
  const std::string itinerary = Converted("a.kmz", archive, "itn");
  EXPECT_NE(itinerary.find("Paris"), std::string::npos) << itinerary;
  EXPECT_EQ(Converted("a.kml", kPlaces, "itn"), itinerary);
  EXPECT_EQ(Converted("A.KMZ", archive, "itn"), itinerary);
  // Under the wrong name too.
  EXPECT_EQ(Converted("a.kml", archive, "itn"), itinerary);
  EXPECT_EQ(Converted("a.kmz", kPlaces, "itn"), itinerary);
}

TEST(ForeignFiles, AnArchiveWithoutPlacesCannotBeRead) {
  const TemporaryFolder folder;
  for (const std::string& content : {ZipBytes({{"a.png", "picture"}}), std::string("PK\x03\x04")}) {
    folder.Put("a.kmz", content);
    const ProgramResult result = RunConverter({folder.PathTo("a.kmz"), "itn"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("The file cannot be read."), std::string::npos) << result.errors;
    EXPECT_FALSE(folder.Has("a.itn"));
  }
}

TEST(ForeignFiles, AFolderHoldsArchivesToo) {
  const TemporaryFolder folder;
  folder.Put("a.kmz", ZipBytes({{"doc.kml", kPlaces}}));
  const ProgramResult result = RunConverter({folder.Path().string(), "itn"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(folder.Has("a.itn"));
}

TEST(ForeignFiles, ARecordedTrackOfGoogleEarthIsATrack) {
  const std::string gpx = Converted(
      "a.kml",
      "<kml><Document><Placemark><name>Morning</name><gx:Track><when>2026-05-01T08:00:00Z</when>"
      "<when>2026-05-01T08:00:05Z</when><gx:coord>2.5 48.25 35.5</gx:coord>"
      "<gx:coord>2.75 48.5 36</gx:coord></gx:Track></Placemark></Document></kml>",
      "gpx");
  EXPECT_NE(gpx.find("<name>Morning</name><rtept lat=\"48.250000\" lon=\"2.500000\"><ele>35.500000"
                     "</ele></rtept><rtept lat=\"48.500000\" lon=\"2.750000\"><ele>36.000000"
                     "</ele></rtept>"),
            std::string::npos)
      << gpx;
}

TEST(ForeignFiles, EveryPointOfAPlacemarkIsAStop) {
  const std::string itinerary = Converted(
      "a.kml",
      "<kml><Folder><Placemark><name>Gate</name><MultiGeometry><Point><coordinates>1,2"
      "</coordinates></Point><Point><coordinates>3,4</coordinates></Point></MultiGeometry>"
      "</Placemark></Folder></kml>",
      "itn");
  EXPECT_NE(itinerary.find("100000|0200000|Gate|"), std::string::npos) << itinerary;
  EXPECT_NE(itinerary.find("300000|0400000|Gate|"), std::string::npos) << itinerary;
}

TEST(ForeignFiles, TextIsThatOfItsDeclaredEncoding) {
  const auto nameIn = [](const std::string& document) {
    const std::string gpx = Converted("a.gpx", document, "gpx:200");
    const size_t start = gpx.find("<wpt");
    const size_t name = gpx.find("<name>", start) + 6;
    return start == std::string::npos ? gpx : gpx.substr(name, gpx.find('<', name) - name);
  };
  const auto document = [](const std::string& encoding, const std::string& name) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding +
           "\"?><gpx><wpt lat=\"1\" lon=\"2\"><name>" + name + "</name></wpt></gpx>";
  };
  EXPECT_EQ(nameIn(document("windows-1250",
                            "\xA3\xF3"
                            "d\x9F")),
            "Łódź");
  EXPECT_EQ(nameIn(document("windows-1251", "\xCC\xEE\xF1\xEA\xE2\xE0")), "Москва");
  EXPECT_EQ(nameIn(document("iso-8859-7", "\xC1\xE8\xDE\xED\xE1")), "Αθήνα");
  EXPECT_EQ(nameIn(document("Shift_JIS", "\x93\x8C\x8B\x9E")), "東京");
  std::string wide;
  for (const char character : document("UTF-16", "Rh\xF4ne")) wide += {'\0', character};
  EXPECT_EQ(nameIn(wide), "Rhône");
  EXPECT_EQ(nameIn("\xFE\xFF" + wide), "Rhône");
}

}  // namespace
