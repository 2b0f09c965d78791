// CSV files whose columns are found, or lie elsewhere than the layout says.

#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

class CsvColumns : public testing::Test {
 protected:
  // What --csv-read auto finds in a file.
  std::string Found(const std::string& content) {
    folder.Put("a.csv", content);
    const ProgramResult result =
        RunConverter({"--csv-read", "auto", "--inspect", folder.PathTo("a.csv")});
    output = result.output;
    const std::string start = "Columns found in " + folder.PathTo("a.csv") + ": ";
    if (!result.errors.starts_with(start)) return result.errors;
    return result.errors.substr(start.size(), result.errors.find('\n') - start.size());
  }

  bool Shows(const std::string& point) const { return output.find(point) != std::string::npos; }

  TemporaryFolder folder;
  std::string output;
};

TEST_F(CsvColumns, AreFoundByHeadersInFourLanguages) {
  EXPECT_EQ(Found("Name,Latitude,Longitude,Elevation,Comment\n\"Hut, old\",47.5,11.25,1800,c\n"),
            "lat=2,lon=3,ele=4,name=1,comment=5,decimal=.,separator=comma");
  EXPECT_TRUE(Shows("47.500000    11.250000  Hut, old\n")) << output;
  EXPECT_EQ(Found("Nom;Latitude;Longitude;Altitude;Commentaire\nA;47,5;11,25;1800;c\n"),
            "lat=2,lon=3,ele=4,name=1,comment=5,decimal=comma,separator=;");
  EXPECT_TRUE(Shows("47.500000    11.250000  A\n")) << output;
  EXPECT_EQ(Found("L\xE4nge\tBreite\tH\xF6he\tBezeichnung\tBemerkung\n11.25\t47.5\t1800\tA\tc\n"),
            "lat=2,lon=1,ele=3,name=4,comment=5,decimal=.,separator=tab");
  EXPECT_EQ(Found("NAAM;LENGTEGRAAD;BREEDTEGRAAD;HOOGTE;OPMERKING\nA;11.25;47.5;1800;c\n"),
            "lat=3,lon=2,ele=4,name=1,comment=5,decimal=.,separator=;");
}

TEST_F(CsvColumns, HaveHeadersWithMarksUnitsAndOtherTitles) {
  EXPECT_EQ(
      Found("\xEF\xBB\xBF\"id\",\"Lat (\u00B0)\",\"Lng (\u00B0)\",\"Title\"\n7,47.5,11.25,A\n"),
      "lat=2,lon=3,name=4,decimal=.,separator=comma");
  EXPECT_EQ(Found("id|\u00C9TAPE|lat|lon\n7|A|47.5|11.25\n"),
            "lat=3,lon=4,name=2,decimal=.,separator=|");
}

TEST_F(CsvColumns, AreFoundByContent) {
  EXPECT_EQ(Found("Tokyo,35.5,139.75\nSydney,-33.75,151.25\n"),
            "lat=2,lon=3,name=1,decimal=.,separator=comma");
  EXPECT_EQ(Found("139.75;35.5;Tokyo;Japan\n"),
            "lat=2,lon=1,name=3,comment=4,decimal=.,separator=;");
  EXPECT_EQ(Found("7;48,5;2,25;Paris\n8;50,75;4,5;Brussels\n"),
            "lat=2,lon=3,name=4,decimal=comma,separator=;");
  // Both could be either; in one order the places lie in Europe.
  EXPECT_EQ(Found("2.25,48.5,Paris\n"), "lat=2,lon=1,name=3,decimal=.,separator=comma");
  EXPECT_EQ(Found("48.5,2.25,Paris\n"), "lat=1,lon=2,name=3,decimal=.,separator=comma");
  // Nothing tells them apart: as in files of points of interest.
  EXPECT_EQ(Found("12.5,13.5,A\n"), "lat=2,lon=1,name=3,decimal=.,separator=comma");
  EXPECT_EQ(Found("Ziel,Nord,Ost\nA,48.5,2.25\n"), "lat=2,lon=3,name=1,decimal=.,separator=comma");
}

TEST_F(CsvColumns, AreToldWhenTheyAreNotFound) {
  folder.Put("a.csv", "a,b,c\n1,2,3\n");
  const ProgramResult result = RunConverter({"--csv-read", "auto", folder.PathTo("a.csv"), "gpx"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("No columns with latitude and longitude were found in " +
                               folder.PathTo("a.csv") +
                               ". Name them, such as --csv-read lat=1,lon=2,name=3.\n"),
            std::string::npos)
      << result.errors;
}

TEST_F(CsvColumns, AreFoundInEveryFileOfAFolder) {
  folder.Put("a.csv", "lat,lon,name\n47.5,11.25,A\n");
  folder.Put("b.csv", "name;lon;lat\nB;11.25;47.5\n");
  EXPECT_EQ(RunConverter({"--csv-read", "auto", "--quiet", folder.PathTo(""), "itn"}).status, 0);
  EXPECT_EQ(folder.Get("a.itn"), "1125000|4750000|A|2|\r\n");
  EXPECT_EQ(folder.Get("b.itn"), "1125000|4750000|B|2|\r\n");
}

TEST_F(CsvColumns, ThatAreFoundAreNotRemembered) {
  const ProgramResult result = RunConverter({"--csv-read", "auto", "--remember"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "--csv-read auto finds the columns of each file anew and cannot be remembered.\n");
}

// The first layout has the longitude in front.
TEST_F(CsvColumns, ContradictedByTheHeaderAreToldWithTheRemedy) {
  folder.Put("a.csv", "lat,lon,name\n47.5,11.25,A\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.csv"), "gpx"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.errors.starts_with(
      "The header of " + folder.PathTo("a.csv") +
      " contradicts the layout that it was read with. Use --csv-read auto or --csv-read "
      "\"lat=1,lon=2,name=3,decimal=.,separator=comma\".\n"))
      << result.errors;
}

TEST_F(CsvColumns, ContradictedByTheHeaderAreToldAlsoWithoutAnyPoint) {
  folder.Put("a.csv", "lon;lat;name\n11.25;47.5;A\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.csv"), "gpx"});
  EXPECT_NE(result.errors.find("--csv-read auto"), std::string::npos) << result.errors;
  folder.Put("b.csv", "Breite;L\u00E4nge\n47,5;11,25\n");
  EXPECT_NE(RunConverter({"--inspect", folder.PathTo("b.csv"), "--csv-read",
                          "lat=1,lon=2,decimal=.,separator=;"})
                .errors.find("\"lat=1,lon=2,decimal=comma,separator=;\""),
            std::string::npos);
}

TEST_F(CsvColumns, AsTheHeaderTellsThemNeedNoWord) {
  for (const std::string header : {"lon,lat,name", "Longitude,Latitude,Name", "a,b,c", "lon,lat"}) {
    folder.Put("a.csv", header + "\n11.25,47.5,A\n");
    const ProgramResult result = RunConverter({folder.PathTo("a.csv"), "gpx"});
    EXPECT_EQ(result.errors.find("--csv-read"), std::string::npos) << result.errors;
  }
}

TEST_F(CsvColumns, OfALayoutMustBeDifferentOnes) {
  const ProgramResult twice = RunConverter({"--csv-read", "lat=1,lon=2,name=2", "a.csv", "gpx"});
  EXPECT_EQ(twice.status, 2);
  EXPECT_EQ(twice.errors, "The CSV layout uses column 2 twice.\n");
  for (const std::string layout : {"lat=1,name=2", "lon=1", "lat=0,lon=1", "name=3"}) {
    for (const std::string option : {"--csv-read", "--csv-write"}) {
      const ProgramResult result = RunConverter({option, layout, "a.csv", "gpx"});
      EXPECT_EQ(result.status, 2) << layout;
      EXPECT_EQ(result.errors,
                "The CSV layout has no column for the latitude or the longitude. Both are needed: "
                "lat=1,lon=2.\n");
    }
  }
}

}  // namespace
