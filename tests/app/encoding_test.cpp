// Texts of 8-bit formats in an encoding told on the command line.

#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

std::string Gpx(const std::string& name) {
  return "<gpx><rte><rtept lat=\"1.5\" lon=\"2.5\"><name>" + name + "</name></rtept></rte></gpx>";
}

// In windows-1250 the byte F2 is the letter U+0148.
const std::string kCzech = "Plze\xF2";

class Encoding : public testing::Test {
 protected:
  ProgramResult Convert(const std::string& source, const std::string& key,
                        const std::string& encoding) {
    return RunConverter(
        {folder.PathTo(source), key, "-o", folder.PathTo("out"), "--encoding", encoding});
  }

  TemporaryFolder folder;
};

TEST_F(Encoding, IsThatOfTheSource) {
  folder.Put("a.itn", "250000|150000|" + kCzech + "|4|\r\n");
  EXPECT_EQ(Convert("a.itn", "gpx:107", "windows-1250").status, 0);
  EXPECT_NE(folder.Get("out").find("<name>Plze\u0148</name>"), std::string::npos);
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "gpx:107", "-o", folder.PathTo("out")}).status,
            0);
  EXPECT_NE(folder.Get("out").find("<name>Plze\u00F2</name>"), std::string::npos);
}

TEST_F(Encoding, IsThatOfTheTarget) {
  folder.Put("a.gpx", Gpx("Plze\u0148"));
  const ProgramResult result = Convert("a.gpx", "itn", "Windows-1250");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(folder.Get("out"), "250000|0150000|" + kCzech + "|2|\r\n");
  EXPECT_NE(result.errors.find(": checked: 1 stop is as it was"), std::string::npos)
      << result.errors;
}

TEST_F(Encoding, TakesLettersThatItLacksForLosses) {
  folder.Put("a.gpx", Gpx("\u0416"));
  const ProgramResult result = Convert("a.gpx", "itn", "windows-1250");
  EXPECT_EQ(folder.Get("out"), "250000|0150000|?|2|\r\n");
  EXPECT_NE(result.errors.find("1 name is not as it was"), std::string::npos) << result.errors;
}

TEST_F(Encoding, MayHaveLettersOfSeveralBytes) {
  folder.Put("a.gpx", Gpx("\u6771\u4EAC"));
  const std::string name = "\x93\x8C\x8B\x9E";
  Convert("a.gpx", "ov2", "shift_jis");
  EXPECT_EQ(folder.Get("out"), std::string("\x02\x12\0\0\0\x90\xD0\x03\0\xF0\x49\x02\0", 13) +
                                   name + std::string(1, '\0'));
  Convert("a.gpx", "itn", "utf-8");
  EXPECT_EQ(folder.Get("out"), "250000|0150000|\u6771\u4EAC|2|\r\n");
}

TEST_F(Encoding, IsThatOfCsvFilesWithTheirHeader) {
  folder.Put("a.gpx", Gpx("Br\u00FCcke \u20AC"));
  RunConverter({folder.PathTo("a.gpx"), "csv", "LANG_GERMAN", "-o", folder.PathTo("out"),
                "--encoding", "windows-1252"});
  EXPECT_EQ(folder.Get("out"),
            "L\xE4ngengrad,Breitengrad,Name\r\n2.500000,1.500000,\"Br\xFC"
            "cke \x80\"\r\n");
  folder.Put("b.csv", folder.Get("out"));
  Convert("b.csv", "gpx:107", "windows-1252");
  EXPECT_NE(folder.Get("out").find("<name>Br\u00FCcke \u20AC</name>"), std::string::npos);
}

TEST_F(Encoding, GivesWayToAMarkInTheFile) {
  folder.Put("a.itn",
             "\xEF\xBB\xBF"
             "250000|150000|Plze\u0148 \u00E9|4|\r\n");
  const ProgramResult result = Convert("a.itn", "ov2", "utf-8");
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_NE(folder.Get("out").find("Plze\u0148 \u00E9"), std::string::npos);
}

TEST_F(Encoding, MustExistAndSuitLinesOfBytes) {
  folder.Put("a.gpx", Gpx("a"));
  for (const std::string name : {"klingon", "utf-16", "utf-32", "utf-7", "ebcdic-us", ""}) {
    const ProgramResult result = Convert("a.gpx", "itn", name);
    EXPECT_EQ(result.status, 2) << name;
    EXPECT_EQ(result.errors, "The encoding \"" + name +
                                 "\" does not exist, or 8-bit files cannot have it. Give a name "
                                 "such as windows-1250, iso-8859-2 or utf-8.\n");
    EXPECT_FALSE(folder.Has("out"));
  }
}

TEST_F(Encoding, IsRefusedWhereNothingIsIn8Bits) {
  folder.Put("a.gpx", Gpx("a"));
  const ProgramResult result = Convert("a.gpx", "kml", "windows-1250");
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.errors.find(": --encoding has no effect here: "), std::string::npos);
  EXPECT_FALSE(folder.Has("out"));
}

}  // namespace
