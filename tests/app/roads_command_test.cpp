// Road databases of this machine on the command line, and ways through them.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/app/service_home.h"
#include "tests/services/offline/small_town.h"

namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::StartsWith;

class RoadsCommand : public ServiceHome {
 protected:
  ProgramResult AddTown() const {
    folder.Put("town.osm", kSmallTown);
    return Run({"--roads", "add", "town", folder.PathTo("town.osm")});
  }
  ProgramResult Way(const std::string& stops) const {
    folder.Put("trip.itn", stops);
    return Run(
        {"--way", folder.PathTo("trip.itn"), "--provider", "offline-roads", "--json", "--offline"});
  }
  /// Begins to make "town" anew in a process group of its own; what it says goes into "said".
  pid_t StartAdding(const std::string& extract) const {
    const pid_t child = fork();
    if (child != 0) return child;
    setpgid(0, 0);
    setenv("XDG_CONFIG_HOME", Home().c_str(), 1);
    setenv("XDG_DATA_HOME", Home().c_str(), 1);
    setenv("LC_ALL", "C", 1);
    const bool isRedirected = std::freopen(folder.PathTo("said").c_str(), "w", stderr) != nullptr;
    if (isRedirected)
      execl(CORVANE_BINARY_FOLDER "/bin/corvanemap", "corvanemap", "--roads", "add", "town",
            folder.PathTo(extract).c_str(), nullptr);
    _exit(127);
  }
};

TEST_F(RoadsCommand, AddsListsAndRemoves) {
  const ProgramResult none = Run({"--roads", "list"});
  EXPECT_EQ(none.status, 0);
  EXPECT_EQ(none.output, "");
  EXPECT_EQ(none.errors,
            "There is no road database yet. Add one with: corvanemap --roads add NAME FILE\n");
  const ProgramResult added = AddTown();
  EXPECT_EQ(added.status, 0);
  EXPECT_EQ(added.errors, "The road database \"town\" is ready.\n");
  EXPECT_THAT(Run({"--roads", "list"}).output, StartsWith("town  4"));
  const ProgramResult removed = Run({"--roads", "remove", "town"});
  EXPECT_EQ(removed.status, 0);
  EXPECT_EQ(removed.errors, "The road database \"town\" is removed.\n");
  EXPECT_EQ(Run({"--roads", "list", "--quiet"}).errors, "");
  EXPECT_EQ(Run({"--roads", "remove", "town"}).status, 2);
}

TEST_F(RoadsCommand, RefusesWhatIsNoExtract) {
  folder.Put("town.osm", "no extract");
  const ProgramResult result = Run({"--roads", "add", "town", folder.PathTo("town.osm")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("town.osm") +
                               " is no OpenStreetMap extract. An extract ends in .osm, .osm.gz, "
                               ".osm.bz2 or .osm.pbf.\n");
  folder.Put("empty.osm", "<osm version=\"0.6\"></osm>");
  EXPECT_THAT(Run({"--roads", "add", "town", folder.PathTo("empty.osm")}).errors,
              HasSubstr("it holds no roads"));
  EXPECT_EQ(Run({"--roads", "add", "town", "/nonexistent.osm"}).status, 2);
  EXPECT_EQ(Run({"--roads", "add", "a/b", folder.PathTo("town.osm")}).status, 2);
}

/// An extract that takes a while: so many crossings in a row, each a street of its own.
std::string LongRow(int crossings) {
  std::string osm = "<osm version=\"0.6\">\n";
  const auto text = [](int number) { return std::to_string(number); };
  for (int i = 1; i <= crossings; ++i)
    osm += "<node id=\"" + text(i) + "\" lat=\"48.0\" lon=\"" + std::to_string(7.0 + i * 1e-5) +
           "\"/>\n";
  for (int i = 1; i < crossings; ++i)
    osm += "<way id=\"" + text(i) + "\"><nd ref=\"" + text(i) + "\"/><nd ref=\"" + text(i + 1) +
           "\"/><tag k=\"highway\" v=\"residential\"/></way>\n";
  return osm + "</osm>\n";
}

// Ctrl+C goes to every process of the terminal; a program may also be told alone.
TEST_F(RoadsCommand, InterruptedAtAnyMomentLeaveNothingHalf) {
  ASSERT_EQ(AddTown().status, 0);
  folder.Put("row.osm", LongRow(100000));
  const std::string roads = Home() + "/CorvaneMap/roads";
  int interrupted = 0;
  for (int turn = 0; turn < 6; ++turn) {
    const pid_t child = StartAdding("row.osm");
    // Before, at and after the first moment at which something half is there.
    for (int i = 0; i < 2000 && turn > 0 && !fs::exists(roads + "/.new-town"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(turn * turn * 10));
    kill(turn % 2 == 0 ? child : -child, SIGINT);
    const int status = WaitFor(child);
    const std::string said = folder.Get("said");
    if (status == 1) {
      ++interrupted;
      EXPECT_EQ(said, "Interrupted; the road database \"town\" was not changed.\n");
    } else if (status == 0) {
      EXPECT_EQ(said, "The road database \"town\" is ready.\n");
    } else {
      EXPECT_EQ(status, 128 + SIGINT) << said;  // before it has begun
    }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(roads))
      names.push_back(entry.path().filename());
    EXPECT_EQ(names, std::vector<std::string>{"town"}) << status << said;
    // Whichever it is, ways lead through it.
    EXPECT_EQ(Way("700000|4800000|A|4|\r\n700100|4800000|B|2|\r\n").status, 0);
  }
  EXPECT_GE(interrupted, 2);
}

TEST_F(RoadsCommand, TellsHowItIsUsed) {
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {}, {"add"}, {"add", "town"}, {"list", "all"}, {"remove"}, {"drop", "town"}}) {
    std::vector<std::string> arguments = {"--roads"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    const ProgramResult result = Run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "--roads takes: add NAME FILE, list, or remove NAME\n");
  }
}

TEST_F(RoadsCommand, LeadTheWayWithoutANetwork) {
  ASSERT_EQ(AddTown().status, 0);
  // South Street and the Toll Bridge.
  const ProgramResult result = Way("700000|4800000|A|4|\r\n701000|4801000|B|2|\r\n");
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, StartsWith("{\"provider\": {\"id\": 100, \"name\": "
                                        "\"offline-roads\"}, \"mode\": 1, \"status\": 0, "
                                        "\"message\": null, \"distance\": 185"));
  EXPECT_THAT(result.output, HasSubstr("Toll Bridge"));
  EXPECT_EQ(result.errors, "");
}

TEST_F(RoadsCommand, SayWhichExtractWouldHelp) {
  ASSERT_EQ(AddTown().status, 0);
  const ProgramResult nowhere = Way("700000|4800000|A|4|\r\n736000|4808000|Home|2|\r\n");
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_THAT(nowhere.output,
              HasSubstr("\"status\": 1, \"message\": \"No road database holds Home (48.080000, "
                        "7.360000), near Colmar, Grand Est, France. Add an OpenStreetMap extract "
                        "of that region or country: corvanemap --roads add NAME FILE\""));
  // Within the town's area, but 3 km from its roads.
  const ProgramResult field = Way("700000|4800000|A|4|\r\n705000|4804000|Field|2|\r\n");
  EXPECT_EQ(field.status, 1);
  EXPECT_THAT(field.output, HasSubstr("\"status\": 5, \"message\": \"No road lies within a "
                                      "kilometre of Field (48.040000, 7.050000).\""));
}

TEST_F(RoadsCommand, WriteTheWayAsATrack) {
  ASSERT_EQ(AddTown().status, 0);
  folder.Put("trip.itn", "700000|4800000|A|4|\r\n701000|4801000|B|2|\r\n");
  const ProgramResult result = Run(
      {folder.PathTo("trip.itn"), "plt", "--offline", "--directions=offline-roads", "--as-track"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.errors,
              StartsWith(folder.PathTo("trip.itn") + ": 1 leg of 1, 1.9km, 00:02\n"));
  EXPECT_THAT(folder.Get("trip.plt"), HasSubstr("+48.0100007, +007.0099999"));
}

}  // namespace
