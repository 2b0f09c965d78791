// An itinerary adapted to what its target can hold.

#include <string>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

std::string Stop(const std::string& position, const std::string& name,
                 const std::string& comment = "") {
  return "<rtept " + position + "><name>" + name + "</name><cmt>" + comment + "</cmt></rtept>";
}

std::string Gpx(const std::string& stops) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><gpx><rte>" + stops + "</rte></gpx>";
}

const std::string kFirst = "lat=\"1.5\" lon=\"2.5\"";
const std::string kSecond = "lat=\"3.5\" lon=\"4.5\"";
const std::string kThird = "lat=\"5.5\" lon=\"6.5\"";

class Fit : public testing::Test {
 protected:
  // Converts the stops, which become the file `target`.
  ProgramResult Convert(const std::string& stops, const std::string& key, const std::string& target,
                        const std::vector<std::string>& options = {"--fit"}) {
    folder.Put("a.gpx", Gpx(stops));
    std::vector<std::string> arguments = {folder.PathTo("a.gpx"), key, "-o", folder.PathTo(target)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunConverter(arguments);
  }

  TemporaryFolder folder;
};

TEST_F(Fit, SpellsLettersThatTheTargetLacks) {
  const ProgramResult result = Convert(
      Stop(kFirst, "Plzeň") + Stop(kSecond, "Москва") + Stop(kThird, "Αθήνα é"), "itn", "b.itn");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(folder.Get("b.itn"),
            "250000|0150000|Plzen|4|\r\n450000|0350000|Moskva|0|\r\n"
            "650000|0550000|Athina \xE9|2|\r\n");
  const std::string target = folder.PathTo("b.itn");
  EXPECT_EQ(result.errors,
            target + ": adapted: 3 texts were spelled with other letters\n" + target +
                ": checked: all 3 stops are in it as they were adapted, within 0.0 m\n");
}

TEST_F(Fit, PutsLettersAndTheirAccentsTogetherFirst) {
  Convert(Stop(kFirst, "Me\u0301rida \u0107e\u0301"), "ov2", "b.ov2");
  EXPECT_NE(folder.Get("b.ov2").find("M\xE9rida c\xE9"), std::string::npos);
}

TEST_F(Fit, LeavesTextsAloneUnlessItIsAsked) {
  const ProgramResult result =
      Convert(Stop(kFirst, "Plzeň") + Stop(kSecond, "A|B"), "itn", "b.itn", {});
  EXPECT_EQ(folder.Get("b.itn"), "250000|0150000|Plze?|4|\r\n450000|0350000|A|B|2|\r\n");
  EXPECT_NE(
      result.errors.find(": with --fit the itinerary is adapted to what this format can hold\n"),
      std::string::npos)
      << result.errors;
}

TEST_F(Fit, NamesNoRemedyWhereThereIsNone) {
  const ProgramResult result = Convert(Stop(kFirst, "A", "a comment"), "itn", "b.itn", {});
  EXPECT_EQ(result.errors.find("--fit"), std::string::npos) << result.errors;
}

TEST_F(Fit, ReplacesSeparators) {
  Convert(Stop(kFirst, "A|B") + Stop(kSecond, "C, D"), "itn", "b.itn");
  EXPECT_EQ(folder.Get("b.itn"), "250000|0150000|A/B|4|\r\n450000|0350000|C, D|2|\r\n");
  const ProgramResult result =
      Convert(Stop(kFirst, "A|B") + Stop(kSecond, "C, D", "e,f"), "rte:149", "b.rte");
  EXPECT_NE(folder.Get("b.rte").find(",A|B,"), std::string::npos);
  EXPECT_NE(folder.Get("b.rte").find(",C; D,"), std::string::npos);
  EXPECT_NE(folder.Get("b.rte").find(",e;f,"), std::string::npos);
  EXPECT_NE(result.errors.find(": adapted: separators were replaced in 2 texts\n"),
            std::string::npos)
      << result.errors;
}

// Names that are not escaped make a file that nobody can read.
TEST_F(Fit, MakesReadableWhatWouldNotBe) {
  const std::string stops = Stop(kFirst, "A &amp; B") + Stop(kSecond, "C");
  const ProgramResult plain = Convert(stops, "xml:259", "b.xml", {});
  EXPECT_EQ(plain.status, 3);
  EXPECT_NE(plain.errors.find("--fit"), std::string::npos) << plain.errors;
  EXPECT_EQ(Convert(stops, "xml:259", "b.xml").status, 0);
  EXPECT_NE(folder.Get("b.xml").find("City=\"A + B\""), std::string::npos);
}

TEST_F(Fit, GivesStopsWithoutANameOneEach) {
  const std::string stops = Stop(kFirst, "") + Stop(kSecond, "") + Stop(kThird, "");
  for (const std::string key : {"gdb", "mps"}) {
    const ProgramResult plain = Convert(stops, key, "b." + key, {});
    EXPECT_EQ(plain.status, 3) << plain.errors;
    EXPECT_NE(plain.errors.find("--fit"), std::string::npos) << plain.errors;
    const ProgramResult result = Convert(stops, key, "b." + key);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_NE(result.errors.find(": adapted: 3 stops without a name were given one\n"),
              std::string::npos)
        << result.errors;
    const ProgramResult seen = RunConverter({"--inspect", folder.PathTo("b." + key)});
    for (const std::string line :
         {"1.500000     2.500000  1\n", "3.500000     4.500000  2\n", "5.500000     6.500000  3\n"})
      EXPECT_NE(seen.output.find(line), std::string::npos) << seen.output;
  }
}

TEST_F(Fit, MakesNamesOfDifferentPlacesUnique) {
  const std::string stops =
      Stop(kFirst, "Halt") + Stop(kSecond, "Halt") + Stop(kThird, "Halt 2") + Stop(kFirst, "Halt");
  const ProgramResult result = Convert(stops, "rt2", "b.rt2");
  EXPECT_EQ(folder.Get("b.rt2"),
            "H1,OziExplorer CE Route2 File Version 1.0\r\nH2,WGS 84\r\nH3,a,,0\r\n"
            "W,Halt,1.5000000,2.5000000,0\r\nW,Halt 3,3.5000000,4.5000000,0\r\n"
            "W,Halt 2,5.5000000,6.5000000,0\r\nW,Halt,1.5000000,2.5000000,0\r\n");
  EXPECT_NE(result.errors.find(": adapted: 1 name was made unique\n"), std::string::npos)
      << result.errors;
}

TEST_F(Fit, KeepsNamesThatNeedNotBeUnique) {
  Convert(Stop(kFirst, "Halt") + Stop(kSecond, "Halt"), "itn", "b.itn");
  EXPECT_EQ(folder.Get("b.itn"), "250000|0150000|Halt|4|\r\n450000|0350000|Halt|2|\r\n");
}

TEST_F(Fit, CutsNamesAndLeavesRoomForTheirNumbers) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyzabcdefghijklmnop";  // 42
  const ProgramResult result =
      Convert(Stop(kFirst, letters) + Stop(kSecond, letters), "rte:111", "b.rte");
  const std::string file = folder.Get("b.rte");
  EXPECT_NE(file.find(" " + letters.substr(0, 40) + " 0.00000e"), std::string::npos) << file;
  EXPECT_NE(file.find(" " + letters.substr(0, 31) + " 2        0.00000e"), std::string::npos)
      << file;
  EXPECT_NE(result.errors.find("1 name was made unique, 2 texts were cut"), std::string::npos)
      << result.errors;
}

TEST_F(Fit, CutsBetweenLetters) {
  const std::string start(39, 'a');
  Convert(Stop(kFirst, "A", start + "é"), "rte:149", "b.rte", {"--fit", "--encoding", "utf-8"});
  EXPECT_NE(folder.Get("b.rte").find("," + start + ",0,0"), std::string::npos);
  // Without it the bytes are cut as they come.
  Convert(Stop(kFirst, "A", start + "é"), "rte:149", "b.rte", {"--encoding", "utf-8"});
  EXPECT_NE(folder.Get("b.rte").find("," + start + "\xC3,0,0"), std::string::npos);
}

TEST_F(Fit, SplitsAtTheLimitOfTheTarget) {
  std::string stops;
  for (int i = 1; i <= 50; ++i)
    stops += Stop("lat=\"1." + std::to_string(10 + i) + "\" lon=\"2\"", std::to_string(i));
  const ProgramResult result = Convert(stops, "itn", "b.itn");
  EXPECT_EQ(result.status, 0);
  EXPECT_FALSE(folder.Has("b.itn"));
  EXPECT_NE(folder.Get("b_1.itn").find("|48|2|\r\n"), std::string::npos);
  EXPECT_EQ(folder.Get("b_2.itn"),
            "200000|0158000|48|4|\r\n200000|0159000|49|0|\r\n200000|0160000|50|2|\r\n");
  EXPECT_NE(result.errors.find(": adapted: files of at most 48 points\n"), std::string::npos)
      << result.errors;
  EXPECT_NE(result.errors.find(": checked: all 50 stops"), std::string::npos) << result.errors;
  Convert(stops, "itn", "c.itn", {"--fit", "--split", "50"});
  EXPECT_TRUE(folder.Has("c.itn"));
}

TEST_F(Fit, SplitsWhereTheWriterKnowsNoParts) {
  std::string stops;
  for (int i = 0; i < 1001; ++i) {
    stops += Stop("lat=\"" + std::to_string(1 + i / 100) + "." + std::to_string(100 + i % 100) +
                      "\" lon=\"2\"",
                  "n" + std::to_string(i));
  }
  const ProgramResult result = Convert(stops, "mag", "b.mag");
  EXPECT_TRUE(folder.Has("b_1.mag"));
  EXPECT_TRUE(folder.Has("b_2.mag"));
  EXPECT_FALSE(folder.Has("b.mag"));
  EXPECT_EQ(folder.Get("b_2.mag").find("WPT004"), std::string::npos);
}

// The library takes longer to load than most conversions take to run.
TEST_F(Fit, LoadsTheSpellerOnlyForLettersThatAreLacking) {
  const auto loads = [this](const std::string& name, const std::string& options) {
    folder.Put("a.gpx", Gpx(Stop(kFirst, name)));
    return RunConverter({folder.PathTo("a.gpx"), "itn", options, "-o", folder.PathTo("b.itn")},
                        "LC_ALL=C LD_DEBUG=files")
               .errors.find("libicui18n") != std::string::npos;
  };
  EXPECT_FALSE(loads("\u010C", "--tolerant"));
  EXPECT_FALSE(loads("\u00C7", "--fit"));
  EXPECT_TRUE(loads("\u010C", "--fit"));
}

TEST_F(Fit, IsToldInJson) {
  const ProgramResult result =
      Convert(Stop(kFirst, "\u010C|"), "itn", "b.itn", {"--fit", "--json"});
  EXPECT_NE(result.output.find("\"fit\": {\"textsSpelled\": 1, \"separatorsReplaced\": 1}"),
            std::string::npos)
      << result.output;
  const ProgramResult plain = Convert(Stop(kFirst, "\u010C|"), "itn", "b.itn", {"--json"});
  EXPECT_NE(plain.output.find("\"remedy\": \"--fit\""), std::string::npos) << plain.output;
}

TEST_F(Fit, IsALossLikeOthersToStrictEyes) {
  EXPECT_EQ(Convert(Stop(kFirst, "\u010C"), "itn", "b.itn", {"--fit", "--strict"}).status, 3);
  EXPECT_EQ(Convert(Stop(kFirst, "C"), "itn", "b.itn", {"--fit", "--strict"}).status, 0);
}

}  // namespace
