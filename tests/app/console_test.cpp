// How the console speaks: names that people type, reasons, words for options, languages.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

TEST(Alias, StandsForAKey) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const struct {
    std::string alias;
    std::string key;
  } kCases[] = {{"garmin", "gpx:376"}, {"zumo", "gpx:376"},     {"nuvi", "gpx:200"},
                {"tomtom", "itn"},     {"navigon4", "rte:131"}, {"Becker", "rte:223"},
                {"ozi", "rte:149"},    {"magellan", "mag"},     {"mapsource", "gdb"}};
  for (const auto& [alias, key] : kCases) {
    const auto written = [&folder](const std::string& name) {
      const ProgramResult result =
          RunConverter({folder.PathTo("a.itn"), name, "-o", "-"}, "LC_ALL=C SOURCE_DATE_EPOCH=0");
      EXPECT_EQ(result.status, 0) << name << result.errors;
      return result.output;
    };
    EXPECT_EQ(written(alias), written(key)) << alias;
    EXPECT_NE(written(alias), "") << alias;
  }
}

TEST(Alias, StandsForAReaderToo) {
  const TemporaryFolder folder;
  folder.Put("a", kItinerary);
  const ProgramResult result =
      RunConverter({folder.PathTo("a"), "ov2", "--from", "tomtom", "-o", "-"});
  EXPECT_EQ(result.output, kPois);
}

TEST(Alias, IsListed) {
  const std::string table = RunConverter({"--formats"}).output;
  EXPECT_NE(
      table.find("\ngarmin      read and write  = gpx:376, Garmin Zumo, GPX BaseCamp (*.gpx)\n"),
      std::string::npos)
      << table;
  const std::string json = RunConverter({"--formats", "--json"}).output;
  EXPECT_NE(json.find("\"aliases\": [\"basecamp\", \"garmin\", \"zumo\"]}"), std::string::npos);
}

TEST(Inspection, NamesTheKey) {
  const TemporaryFolder folder;
  folder.Put("a.rte", "[Paris|][0][10]|||2.35222|48.85661\r\n");
  const std::string path = folder.PathTo("a.rte");
  EXPECT_TRUE(RunConverter({"--inspect", path})
                  .output.starts_with(path + ": row 29, Navigon MN 4 & 5, MioMap 2 (*.rte), key "
                                             "rte:131\n"));
}

TEST(Inspection, SummarisesEachListInALine) {
  const TemporaryFolder folder;
  folder.Put("a.gpx",
             "<gpx version=\"1.0\"><wpt lat=\"1\" lon=\"2\"><name>A</name></wpt>"
             "<rte><name>Day</name><rtept lat=\"1\" lon=\"2\"/><rtept lat=\"3\" lon=\"4\"/></rte>"
             "</gpx>");
  const std::string path = folder.PathTo("a.gpx");
  EXPECT_EQ(RunConverter({"--inspect", "--summary", path}).output,
            path +
                ": row 15, GPS eXchange 1.0 (*.gpx), key gpx:107\n"
                "1. route \"Day\" (2 points)\n"
                "2. waypoints (1 point)\n");
  EXPECT_EQ(RunConverter({"--inspect", "--summary", "--json", path}).output,
            "{\"file\": \"" + path +
                "\", \"status\": 0,\n"
                " \"format\": {\"row\": 15, \"extension\": \"gpx\", \"textId\": 107, \"label\": "
                "\"GPS eXchange 1.0 (*.gpx)\", \"key\": \"gpx:107\"},\n"
                " \"lists\": [\n"
                "  {\"kind\": \"route\", \"name\": \"Day\", \"count\": 2},\n"
                "  {\"kind\": \"waypoints\", \"name\": \"\", \"count\": 1}]}\n");
}

TEST(Inspection, ReadsStandardInputAndFilesWithoutAnExtension) {
  const TemporaryFolder folder;
  folder.Put("trip", kPois);
  const std::string path = folder.PathTo("trip");
  const std::string tail =
      ": row 21, TomTom POI (*.ov2), key ov2\n1. points of interest (2 points)\n";
  EXPECT_EQ(RunConverter({"--inspect", "--summary", path}).output, path + tail);
  const std::string command = "LC_ALL=C " CORVANE_BINARY_FOLDER "/bin/corvanemap --inspect - ";
  EXPECT_EQ(RunShell(command + "--summary <" + Quoted(path)).output, "standard input" + tail);
}

TEST(Options, WithoutEffectAreRefused) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string source = folder.PathTo("a.itn");
  const struct {
    std::vector<std::string> arguments;
    std::string option;
  } kCases[] = {{{source, "kml", "--split", "5"}, "--split"},
                {{source, "kml", "--merge"}, "--merge"},
                {{source, "kml", "--recursive"}, "--recursive"},
                {{source, "kml", "--summary"}, "--summary"},
                {{source, "kml", "--csv-read", "lat=1,lon=2"}, "--csv-read"},
                {{source, "kml", "--csv-write", "lat=1,lon=2"}, "--csv-write"},
                {{source, "kml", "--remember"}, "--remember"},
                {{source, "kml", "--mode", "car"}, "--mode"},
                {{source, "kml", "--avoid", "tolls"}, "--avoid"},
                {{source, "kml", "--tractor"}, "--tractor"},
                {{source, "kml", "--point", "1"}, "--point"},
                {{source, "kml", "--radius", "5"}, "--radius"}};
  for (const auto& [arguments, option] : kCases) {
    const ProgramResult result = RunConverter(arguments);
    EXPECT_EQ(result.status, 2) << option;
    EXPECT_EQ(result.errors, option + " has no effect on this conversion.\n");
  }
  EXPECT_EQ(folder.Content().size(), 1u);
}

TEST(WriterOption, IsAWordOrANumber) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A, B|4|\r\n");
  const std::string source = folder.PathTo("a.itn");
  const std::string number = folder.PathTo("number.gpx");
  const ProgramResult result = RunConverter({source, "gpx:107", "--split", "1", "-o", number});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(result.errors.starts_with(
      "--split 1 with this format means: commas are removed from names and comments. As a word: "
      "--option no-commas\n"))
      << result.errors;
  EXPECT_EQ(folder.Get("number.gpx").find("A, B"), std::string::npos);
  const ProgramResult word = RunConverter(
      {source, "gpx:107", "--option", "no-commas", "--quiet", "-o", folder.PathTo("word.gpx")},
      "LC_ALL=C");
  EXPECT_EQ(word.status, 0);
  EXPECT_EQ(word.errors, "");
  EXPECT_EQ(folder.Get("word.gpx").find("A, B"), std::string::npos);

  const ProgramResult wrong = RunConverter({source, "mag", "--option", "no-commas"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_EQ(wrong.errors,
            "The format \"mag\" knows no option \"no-commas\". It knows: explorist\n");
  const ProgramResult none = RunConverter({source, "kml", "--option", "no-commas"});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.errors, "The format \"kml\" knows no option.\n");
}

TEST(Reason, IsThatAFormatIsOnlyRead) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "axg"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "The format \"axg\" can only be read. \"corvanemap --formats\" lists what can be "
            "written.\n");
}

TEST(Reason, IsThatAFileIsPacked) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  ASSERT_EQ(
      RunShell("gzip -c " + Quoted(folder.PathTo("a.itn")) + " >" + Quoted(folder.PathTo("a.gpx")))
          .status,
      0);
  const ProgramResult result = RunConverter({folder.PathTo("a.gpx"), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.ends_with(
      "Reason: it is packed with gzip; unpack it first, for example with gunzip\n"))
      << result.errors;
}

TEST(Reason, IsThatAFileIsAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = folder.PathTo("a.itn");
  const ProgramResult result =
      RunShell("mkfifo " + Quoted(pipe) + "; LC_ALL=C " CORVANE_BINARY_FOLDER "/bin/corvanemap " +
               Quoted(pipe) + " ov2");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, pipe +
                               ": The file cannot be read. Reason: it is a pipe or a device, not a "
                               "file; give its content to \"-\" as the source\n");
}

TEST(Json, HasAnObjectForEveryFile) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("b.itn", "nothing");
  folder.Put("c.txt", "nothing");
  const std::string out = folder.PathTo("out");
  const ProgramResult result =
      RunConverter({folder.PathTo(""), "ov2", "--json", "--quiet", "-o", out});
  EXPECT_TRUE(result.output.starts_with("{\"source\": \"" + folder.PathTo("a.itn") +
                                        "\", \"target\": \"" + out +
                                        "/a.ov2\", \"status\": 0, \"checked\": true"))
      << result.output;
  EXPECT_NE(
      result.output.find("\n{\"source\": \"" + folder.PathTo("b.itn") + "\", \"target\": \"" + out +
                         "/b.ov2\", \"status\": 11, \"error\": \"Unknown file format.\"}\n"),
      std::string::npos)
      << result.output;
  EXPECT_NE(result.output.find("\n{\"source\": \"" + folder.PathTo("c.txt") + "\""),
            std::string::npos)
      << result.output;
}

TEST(Json, TellsOfASourceThatIsNotThere) {
  const ProgramResult result = RunConverter({"none.itn", "ov2", "--json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output,
            "{\"source\": \"none.itn\", \"target\": \"\", \"status\": 2, \"error\": "
            "\"The source \\\"none.itn\\\" does not exist.\"}\n");
}

TEST(Json, TellsWhatWasKept) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "mine");
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2", "--json"});
  const std::string kept =
      folder.PathTo("a.ov2") + ": kept, since it was there before; --force replaces it.";
  EXPECT_NE(result.output.find("\"target\": \"" + folder.PathTo("a.ov2") +
                               "\", \"status\": 3, \"error\": \"" + kept + "\"}\n"),
            std::string::npos)
      << result.output;
}

TEST(Languages, HaveTheirDecimalSignAndTheirPlural) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "1|2|A|4|\r\n");
  const auto told = [&folder](const std::string& language) {
    return RunConverter({folder.PathTo("a.itn"), "ov2", "LANG_" + language}).errors;
  };
  const std::string target = folder.PathTo("a.ov2");
  EXPECT_EQ(told("ENGLISH"), target + ": checked: 1 stop is as it was, within 0.0 m\n");
  EXPECT_EQ(told("GERMAN"),
            target + ": gepr\u00FCft: 1 Wegpunkt ist unver\u00E4ndert, auf 0,0 m genau\n");
  EXPECT_EQ(
      told("FRENCH"),
      target +
          "\u00A0: v\u00E9rifi\u00E9\u00A0: 1 \u00E9tape inchang\u00E9e, \u00E0 0,0 m pr\u00E8s\n");
  EXPECT_EQ(told("DUTCH"), target + ": gecontroleerd: 1 stop is ongewijzigd, binnen 0,0 m\n");
}

TEST(Languages, HaveNoEnglishInTheirErrors) {
  const auto told = [](const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"LANG_GERMAN"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ProgramResult result = RunConverter(all);
    EXPECT_EQ(result.status, 2);
    return result.errors.substr(0, result.errors.find('\n'));
  };
  EXPECT_EQ(told({"--split", "viele"}),
            "Falscher Aufruf: der Wert von --split=viele wird nicht verstanden");
  EXPECT_EQ(told({"--split"}), "Falscher Aufruf: --split braucht einen Wert");
  EXPECT_EQ(told({"--nichts"}), "Falscher Aufruf: es gibt keine Option --nichts");
  EXPECT_TRUE(told({"--json=viel"}).starts_with("Falscher Aufruf: der Wert von --json"));
  EXPECT_EQ(told({"-o", ""}), "Falscher Aufruf: --output braucht einen Wert");
  EXPECT_EQ(told({"--simplify", "weit"}),
            "Falscher Aufruf: der Wert von --simplify=weit wird nicht verstanden");
}

// A terminal that knows no escape codes gets none.
TEST(Terminal, GetsNoEscapeCodesWhenItIsDumb) {
  ASSERT_EQ(RunShell("command -v script").status, 0) << "needs the package bsdutils";
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const auto shown = [&folder](const std::string& kind) {
    const std::string command = "env LC_ALL=C TERM=" + kind +
                                " " CORVANE_BINARY_FOLDER "/bin/corvanemap " +
                                Quoted(folder.PathTo("")) + " ov2 --force";
    return RunShell("script -qec " + Quoted(command) + " /dev/null").output;
  };
  EXPECT_NE(shown("xterm").find('\x1B'), std::string::npos);
  EXPECT_EQ(shown("dumb").find('\x1B'), std::string::npos);
  EXPECT_NE(shown("dumb").find(" converted"), std::string::npos);
}

}  // namespace
