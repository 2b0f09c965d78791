// Road databases of this machine on the command line, and ways through them.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/service_home.h"
#include "tests/services/offline/small_town.h"

namespace {

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
  const ProgramResult nowhere = Way("700000|4800000|A|4|\r\n500000|4500000|Lyon|2|\r\n");
  EXPECT_EQ(nowhere.status, 1);
  EXPECT_THAT(nowhere.output,
              HasSubstr("\"status\": 1, \"message\": \"No road database holds Lyon (45.000000, "
                        "5.000000). Add an OpenStreetMap extract of the region around it: "
                        "corvanemap --roads add NAME FILE\""));
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
              StartsWith(folder.PathTo("trip.itn") + ": 1 legs of 1, 1.9km, 00:02\n"));
  EXPECT_THAT(folder.Get("trip.plt"), HasSubstr("+48.0100007, +007.0099999"));
}

}  // namespace
