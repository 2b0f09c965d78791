// The converter as its users run it: whole processes, their files, texts and exit statuses.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

TEST(Conversion, WritesBesideTheSource) {
  const TemporaryFolder folder;
  folder.Put("my trip.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("my trip.itn"), "ov2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, folder.PathTo("my trip.ov2") +
                               ": checked: all 2 stops are as they were, within 0.0 m\n");
  EXPECT_EQ(folder.Get("my trip.itn"), kItinerary);
  EXPECT_EQ(folder.Get("my trip.ov2"), kPois);
}

TEST(Conversion, TakesKeysInAnyCaseWithTheirRowAndFurtherTokens) {
  const TemporaryFolder folder;
  folder.Put("a.ITN", kItinerary);
  EXPECT_EQ(RunConverter({folder.PathTo("a.ITN"), "OV2:298", "more", "tokens"}).status, 0);
  EXPECT_TRUE(folder.Has("a.ov2"));
  EXPECT_EQ(RunConverter({folder.PathTo("a.ITN"), "ov2:106"}).status, 2);
}

TEST(Conversion, WritesWhereItIsTold) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "itn", "-o", folder.PathTo("b.txt")}).status, 0);
  EXPECT_EQ(folder.Get("b.txt"), kItinerary);
  fs::create_directory(folder.PathTo("out"));
  EXPECT_EQ(RunConverter({"--output", folder.PathTo("out"), folder.PathTo("a.itn"), "ov2"}).status,
            0);
  EXPECT_TRUE(folder.Has("out/a.ov2"));
}

TEST(Conversion, SplitsOnRequest) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary + kItinerary);
  EXPECT_EQ(
      RunConverter({folder.PathTo("a.itn"), "itn", "--split", "3", "-o", folder.PathTo("part.itn")})
          .status,
      0);
  EXPECT_EQ(folder.Get("part_1.itn"),
            "235222|4885661|Paris|4|\r\n434870|5085045|Brussels|0|\r\n"
            "235222|4885661|Paris|2|\r\n");
  EXPECT_EQ(folder.Get("part_2.itn"), "235222|4885661|Paris|4|\r\n434870|5085045|Brussels|2|\r\n");
  const ProgramResult refused =
      RunConverter({folder.PathTo("a.itn"), "itn", "--split", "1", "-o", folder.PathTo("x.itn")});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.errors, folder.PathTo("x.itn") +
                                ": The file cannot be write. Reason: a wrong value was given\n");
}

TEST(Conversion, TellsAPartThatCouldNotBeWritten) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary + kItinerary);
  fs::create_directory(folder.PathTo("part_1.itn"));
  const ProgramResult result = RunConverter(
      {folder.PathTo("a.itn"), "itn", "--split", "3", "-o", folder.PathTo("part.itn")});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("The file cannot be write."), std::string::npos);
  EXPECT_TRUE(folder.Has("part_2.itn"));
}

TEST(Conversion, ConvertsAFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  folder.Put("in/b.OV2", kPois);
  folder.Put("in/notes.text", "no trip");
  folder.Put("in/damaged.ov2", "\x09");
  fs::create_directory(folder.PathTo("in/folder.itn"));
  const ProgramResult result =
      RunConverter({folder.PathTo("in"), "itn", "--output", folder.PathTo("deep/out")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Get("deep/out/a.itn"), kItinerary);
  EXPECT_TRUE(folder.Has("deep/out/b.itn"));
  EXPECT_EQ(result.errors, folder.PathTo("in/damaged.ov2") + ": The file cannot be read.\n" +
                               folder.PathTo("in/folder.itn") +
                               ": The file cannot be read. Reason: it is a folder, not a file\n" +
                               folder.PathTo("in/notes.text") + ": Unknown file format.\n" +
                               "2 converted, 1 not recognised, 2 failed\n");
}

TEST(Conversion, TellsOfTripsOfAFolderThatReplaceOthers) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", kPois);
  folder.Put("b.itn", kItinerary);
  const ProgramResult beside = RunConverter({folder.PathTo(""), "ov2", "--force"});
  EXPECT_EQ(beside.status, 0);
  EXPECT_EQ(beside.errors,
            folder.PathTo("a.ov2") + ": this file of the folder is replaced by the conversion of " +
                folder.PathTo("a.itn") + "\n3 converted, 0 not recognised, 0 failed\n");
  const ProgramResult elsewhere =
      RunConverter({folder.Path().string(), "itn", "-o", folder.PathTo("out")});
  EXPECT_NE(elsewhere.errors.find(folder.PathTo("out/a.itn") +
                                  ": this file of the folder is replaced by the conversion of " +
                                  folder.PathTo("a.ov2") + "\n"),
            std::string::npos);
  EXPECT_EQ(RunConverter({folder.PathTo(""), "ov2", "--force", "--quiet"}).errors, "");
}

TEST(Conversion, TellsWhyAFolderCannotBeListed) {
  const TemporaryFolder folder;
  fs::permissions(folder.Path(), fs::perms::none);
  // Root may list every folder, so the program runs as somebody else.
  const std::string runner = geteuid() == 0 ? "setpriv --reuid=65534 --clear-groups" : "env";
  const ProgramResult result =
      RunConverter({folder.Path().string(), "ov2"}, "export LC_ALL=C; " + runner);
  fs::permissions(folder.Path(), fs::perms::owner_all);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.Path().string() +
                               ": The file cannot be read. Reason: access denied; check the "
                               "permissions of the file and its folder\n");
}

TEST(Conversion, FilesThatAreNoTripsAreNoFailureOfAFolder) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("notes.text", "no trip");
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2", "--quiet"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_TRUE(folder.Has("a.ov2"));
}

TEST(Conversion, AFolderWithoutTripsIsAFailure) {
  const TemporaryFolder folder;
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "0 converted, 0 not recognised, 0 failed\n");
}

TEST(Conversion, RefusesWrongUsage) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string source = folder.PathTo("a.itn");
  EXPECT_EQ(RunConverter({}).status, 2);
  EXPECT_EQ(RunConverter({source}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--wrong"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--split"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--split", "-3"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--list", "0"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--list", "1,"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--list", "everything"}).status, 2);
  EXPECT_EQ(RunConverter({source, "ov2", "--output", ""}).status, 2);
  EXPECT_NE(RunConverter({source, "ov2", "--wrong"}).errors.find("--wrong"), std::string::npos);
  const ProgramResult unknownKey = RunConverter({source, "xyz"});
  EXPECT_EQ(unknownKey.status, 2);
  EXPECT_EQ(unknownKey.errors,
            "Unknown format key \"xyz\". \"corvanemap --formats\" lists the keys.\n");
  const ProgramResult noSource = RunConverter({folder.PathTo("none.itn"), "ov2"});
  EXPECT_EQ(noSource.status, 2);
  EXPECT_EQ(noSource.errors, "The source \"" + folder.PathTo("none.itn") + "\" does not exist.\n");
  EXPECT_FALSE(folder.Has("a.ov2"));
}

TEST(Conversion, TellsWhatCannotBeReadOrWritten) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("empty.itn", "");
  folder.Put("noextension", "nothing");
  const ProgramResult empty = RunConverter({folder.PathTo("empty.itn"), "ov2"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.errors, folder.PathTo("empty.itn") + ": Unknown file format.\n");
  EXPECT_EQ(RunConverter({folder.PathTo("noextension"), "ov2"}).status, 1);
  const ProgramResult noFolder =
      RunConverter({folder.PathTo("a.itn"), "ov2", "-o", folder.PathTo("none/a.ov2")});
  EXPECT_EQ(noFolder.status, 1);
  EXPECT_EQ(noFolder.errors, folder.PathTo("none/a.ov2") +
                                 ": The file cannot be write. Reason: no such file or folder\n");
  const ProgramResult full = RunConverter({folder.PathTo("a.itn"), "ov2", "-o", "/dev/full"});
  EXPECT_EQ(full.status, 1);
  EXPECT_NE(full.errors.find("the disk is full"), std::string::npos);
}

TEST(Conversion, FileSizeLimitLeavesTheOldTarget) {
  const TemporaryFolder folder;
  std::string many;
  for (int i = 0; i < 2000; ++i) many += "1|2|Stop|0|\r\n";
  folder.Put("a.itn", many);
  folder.Put("a.ov2", "old");
  const ProgramResult result =
      RunConverter({folder.PathTo("a.itn"), "ov2", "--quiet"}, "ulimit -f 4; LC_ALL=C");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Get("a.ov2"), "old");
  EXPECT_FALSE(folder.Has(".a.ov2.corvane-tmp"));
}

// The question is about an editor, which does not open here.
TEST(Conversion, SaysNothingAboutManyPoints) {
  const TemporaryFolder folder;
  std::string many;
  for (int i = 0; i < 301; ++i) many += "1|2|Stop|0|\r\n";
  folder.Put("a.itn", many);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            folder.PathTo("a.ov2") + ": checked: all 301 stops are as they were, within 0.0 m\n");
  EXPECT_TRUE(folder.Has("a.ov2"));
}

TEST(Conversion, SpeaksTheChosenLanguage) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "");
  const std::string source = folder.PathTo("a.itn");
  EXPECT_EQ(RunConverter({source, "LANG_GERMAN", "ov2"}).errors,
            source + ": Unbekanntes Dateiformat.\n");
  EXPECT_EQ(RunConverter({source, "ov2"}, "LC_ALL=fr_FR.UTF-8").errors,
            source + ": Format de fichier inconnu.\n");
  EXPECT_EQ(RunConverter({source, "ov2", "LANG_ENGLISH"}, "LC_ALL=fr_FR.UTF-8").errors,
            source + ": Unknown file format.\n");
}

TEST(Conversion, TakesTheLanguageFromTokensOnly) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const std::string target = folder.PathTo("LANG_GERMAN.ov2");
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "ov2", "-o", target}).errors,
            target + ": checked: all 2 stops are as they were, within 0.0 m\n");
}

TEST(Conversion, TellsTheFirstOfManyOtherLists) {
  const TemporaryFolder folder;
  std::string gpx = "<gpx version=\"1.0\">";
  for (int i = 1; i <= 11; ++i) {
    gpx += "<rte><name>R" + std::to_string(i) +
           "</name><rtept lat=\"1\" lon=\"2\"><name>A</name></rtept></rte>";
  }
  folder.Put("a.gpx", gpx + "</gpx>");
  const std::string errors = RunConverter({folder.PathTo("a.gpx"), "itn"}).errors;
  EXPECT_NE(errors.find("taken: route \"R1\" (1 point)."), std::string::npos) << errors;
  EXPECT_NE(errors.find("route \"R9\" (1 point), \u2026 (+2). Choose"), std::string::npos)
      << errors;
}

TEST(Conversion, TellsOnceOfAListThatIsNotThere) {
  const TemporaryFolder folder;
  fs::copy_file(CORVANE_SOURCE_FOLDER "/examples/balkan-ring.gpx", folder.PathTo("a.gpx"));
  const ProgramResult result = RunConverter({folder.PathTo("a.gpx"), "itn", "--list", "9"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "The list \"9\" does not exist in " + folder.PathTo("a.gpx") +
                               ". \"corvanemap --inspect\" shows what there is.\n");
}

TEST(Conversion, ShowsNoControlCharacters) {
  const TemporaryFolder folder;
  folder.Put("\x1B[31m.itn", "");
  EXPECT_EQ(RunConverter({folder.PathTo("\x1B[31m.itn"), "ov2"}).errors,
            folder.PathTo("\uFFFD[31m.itn") + ": Unknown file format.\n");
  folder.Put("a.itn", "1|2|Bell\x07\x9B|4|\r\n");
  const std::string shown = RunConverter({"--inspect", folder.PathTo("a.itn")}).output;
  EXPECT_NE(shown.find("Bell\uFFFD\uFFFD\n"), std::string::npos);
}

TEST(Conversion, TakesPathsOfEveryKind) {
  const TemporaryFolder folder;
  for (const std::string name : {"caf\xE9.itn", "-dash.itn", "a \"quoted\" $HOME.itn",
                                 "\u6771\u4eac.itn", "line\nbreak.itn"}) {
    folder.Put(name, kItinerary);
    const std::string target = name.substr(0, name.size() - 3) + "ov2";
    EXPECT_EQ(RunConverter({folder.PathTo(name), "ov2"}).status, 0) << name;
    EXPECT_TRUE(folder.Has(target)) << name;
  }
  const ProgramResult dash =
      RunShell("cd " + Quoted(folder.Path().string()) +
               " && rm -- -dash.ov2 && " CORVANE_BINARY_FOLDER "/bin/corvanemap -- -dash.itn ov2");
  EXPECT_EQ(dash.status, 0);
  EXPECT_TRUE(folder.Has("-dash.ov2"));
}

TEST(Conversion, TakesBracketsAsTheyStand) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("[trips]"));
  fs::create_directory(folder.PathTo("trips"));
  folder.Put("[trips]/a.itn", kItinerary);
  folder.Put("trips/b.itn", kItinerary);
  const ProgramResult result =
      RunShell("cd " + Quoted(folder.Path().string()) +
               " && " CORVANE_BINARY_FOLDER "/bin/corvanemap '[trips]' ov2 -- LANG_ENGLISH");
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(folder.Has("[trips]/a.ov2"));
  EXPECT_FALSE(folder.Has("trips/b.ov2"));
}

TEST(Inspection, ShowsListsAndPoints) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const ProgramResult text = RunConverter({"--inspect", folder.PathTo("a.itn")});
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.output, folder.PathTo("a.itn") +
                             ": row 20, TomTom Itinerary (*.itn), key itn\n"
                             "1. route (2 points)\n"
                             "     48.856610     2.352220  Paris\n"
                             "     50.850450     4.348700  Brussels\n");
}

TEST(Inspection, PrintsOneJsonObject) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "235222|-4885661|Say \"\\\t\xE9|4|\r\n");
  const ProgramResult json = RunConverter({"--inspect", "--json", folder.PathTo("a.itn")});
  EXPECT_EQ(json.status, 0);
  EXPECT_EQ(json.output,
            "{\"file\": \"" + folder.PathTo("a.itn") +
                "\", \"status\": 0,\n"
                " \"format\": {\"row\": 20, \"extension\": \"itn\", \"textId\": 106, "
                "\"label\": \"TomTom Itinerary (*.itn)\"},\n"
                " \"lists\": [\n"
                "  {\"kind\": \"route\", \"name\": \"\", \"points\": [\n"
                "    {\"latitude\": -48.85661, \"longitude\": 2.35222, \"altitude\": 0, "
                "\"name\": \"Say \\\"\\\\\\u0009\u00e9\", \"comment\": \"\"}]}]}\n");
}

TEST(Inspection, TellsWhatItCannotRead) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "");
  const ProgramResult json = RunConverter({"--inspect", "--json", folder.PathTo("a.itn")});
  EXPECT_EQ(json.status, 1);
  EXPECT_EQ(json.output,
            "{\"file\": \"" + folder.PathTo("a.itn") + "\", \"status\": 11,\n \"lists\": []}\n");
  EXPECT_EQ(json.errors, folder.PathTo("a.itn") + ": Unknown file format.\n");
  EXPECT_EQ(RunConverter({"--inspect", folder.PathTo("none.itn")}).status, 2);
  EXPECT_EQ(RunConverter({"--inspect"}).status, 2);
  const ProgramResult of = RunConverter({"--inspect", folder.PathTo("")});
  EXPECT_EQ(of.status, 1);
  EXPECT_EQ(of.errors,
            folder.PathTo("") + ": The file cannot be read. Reason: it is a folder, not a file\n");
}

TEST(Information, ThatCannotBePrintedIsAFailure) {
  const std::string program = CORVANE_BINARY_FOLDER "/bin/corvanemap ";
  for (const std::string option :
       {"--help", "--version", "--formats", "--formats --json",
        "--inspect " CORVANE_SOURCE_FOLDER "/examples/dolomites-passes.itn"}) {
    EXPECT_EQ(RunShell(program + option + " >/dev/full").status, 1) << option;
    EXPECT_EQ(RunShell(program + option + " | true; exit ${PIPESTATUS[0]}").status, 0) << option;
  }
}

TEST(Information, IsPrintedOnRequest) {
  const ProgramResult version = RunConverter({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output,
            "Corvane Map 1.21\n"
            "Towns of the world: GeoNames (https://www.geonames.org/), CC BY 4.0\n");
  const ProgramResult help = RunConverter({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const std::string option : {"SOURCE", "KEY", "--output", "--list", "--split", "--quiet",
                                   "--formats", "--inspect", "--json", "--help", "--version"})
    EXPECT_NE(help.output.find(option), std::string::npos) << option;
  const ProgramResult formats = RunConverter({"--formats"});
  EXPECT_EQ(formats.status, 0);
  EXPECT_NE(formats.output.find("itn         read and write  TomTom Itinerary (*.itn)\n"),
            std::string::npos);
  const ProgramResult json = RunConverter({"--formats", "--json"});
  EXPECT_NE(json.output.find("{\"row\": 21, \"key\": \"ov2\", \"extension\": \"ov2\", "
                             "\"textId\": 298, \"label\": \"TomTom POI (*.ov2)\", "
                             "\"patterns\": \"*.ov2\", \"reads\": true, \"writes\": true}"),
            std::string::npos);
}

}  // namespace
