// The layers of the map from the command line.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class LayerSettingsCommand : public testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) const {
    return RunConverter(arguments, "XDG_CONFIG_HOME=" + folder.PathTo("config") + " LC_ALL=C");
  }
  ProgramResult Set(const std::vector<std::string>& assignments) const {
    std::vector<std::string> arguments;
    for (const std::string& assignment : assignments)
      arguments.insert(arguments.end(), {"--set", assignment});
    return Run(arguments);
  }

  const TemporaryFolder folder;
};

TEST_F(LayerSettingsCommand, ThereAreNoneAtFirst) {
  EXPECT_THAT(Run({"--settings"}).output, Not(HasSubstr("layer.")));
  EXPECT_FALSE(folder.Has("config"));
}

TEST_F(LayerSettingsCommand, AddsChangesAndTakesAway) {
  EXPECT_EQ(Set({"layer.Streets.address=https://{s}.tile.example/{z}/{x}/{y}.png",
                 "layer.Streets.credit=(c) us", "Layer.Streets.Least-Zoom=2",
                 "layer.v1.2 hills.address=http://127.0.0.1:81/{z}/{x}/{y}"})
                .status,
            0);
  std::string listed = Run({"--settings"}).output;
  EXPECT_THAT(listed, HasSubstr("layer.Streets.address  text     "
                                "https://{s}.tile.example/{z}/{x}/{y}.png "));
  EXPECT_THAT(listed, HasSubstr("layer.Streets.credit   text     (c) us "));
  EXPECT_THAT(listed, HasSubstr("layer.Streets.least-zoom number   2            0 "));
  EXPECT_THAT(listed, HasSubstr("layer.Streets.greatest-zoom number   19           19 "));
  // Nobody is asked before the user allows it.
  EXPECT_THAT(listed, HasSubstr("layer.Streets.allowed  yes or no 0            0 "));
  EXPECT_THAT(listed,
              HasSubstr("layer.v1.2 hills.address text     http://127.0.0.1:81/{z}/{x}/{y} "));

  EXPECT_EQ(Set({"layer.Streets.allowed=1"}).status, 0);
  EXPECT_THAT(Run({"--settings", "--json"}).output,
              HasSubstr(R"({"key": "layer.Streets.allowed", "kind": "yes or no", "value": "1", )"
                        R"("default": "0", )"));
  EXPECT_EQ(Set({"layer.Streets.allowed=0"}).status, 0);
  EXPECT_THAT(Run({"--settings"}).output, HasSubstr("layer.Streets.allowed  yes or no 0 "));

  EXPECT_EQ(Set({"layer.Streets.address="}).status, 0);
  listed = Run({"--settings"}).output;
  EXPECT_THAT(listed, Not(HasSubstr("layer.Streets")));
  EXPECT_THAT(listed, HasSubstr("layer.v1.2 hills"));
}

TEST_F(LayerSettingsCommand, AKeyInAnAddressIsMasked) {
  EXPECT_EQ(Set({"layer.Mine.address=https://tile.example/{z}/{x}/{y}.png?apikey=SECRET"}).status,
            0);
  const ProgramResult listed = Run({"--settings"});
  EXPECT_THAT(listed.output, HasSubstr("layer.Mine.address     text     "
                                       "https://tile.example/{z}/{x}/{y}.png?******** "));
  EXPECT_THAT(listed.output + listed.errors, Not(HasSubstr("SECRET")));
  EXPECT_THAT(Run({"--settings", "--json"}).output, Not(HasSubstr("SECRET")));
}

TEST_F(LayerSettingsCommand, RefusesWhatCannotBeAskedAndKeepsAllAsItWas) {
  ASSERT_EQ(Set({"layer.Streets.address=https://tile.example/{z}/{x}/{y}"}).status, 0);
  const std::string before = Run({"--settings"}).output;
  const std::string noAddress =
      "The address of a map layer begins with https:// or http:// and a host, and behind them it "
      "has {z}, {x} and {y}, as in https://tile.example.org/{z}/{x}/{y}.png.\n";
  const struct {
    const char* assignment;
    std::string message;
  } kRows[] = {
      {"layer.Streets.address=tile.example/{z}/{x}/{y}?key=SECRET", "layer.Streets: " + noAddress},
      {"layer.New.allowed=1", "layer.New: " + noAddress},
      {"layer.Streets.allowed=yes",
       "The value \"yes\" of layer.Streets.allowed is not allowed. Allowed: 0, 1\n"},
      {"layer.Streets.least-zoom=-1",
       "The value \"-1\" of layer.Streets.least-zoom is not allowed. Allowed: 0 to 22\n"},
      {"layer.Streets.greatest-zoom=23",
       "layer.Streets: The zooms of a map layer lie between 0 and 22, the smallest not above the "
       "largest.\n"},
      {"layer.Streets.colour=red",
       "layer.Streets.colour: a map layer has no such setting. There are: address, credit, "
       "least-zoom, greatest-zoom, allowed\n"},
      {"layer.Streets=1",
       "layer.Streets: a map layer has no such setting. There are: address, credit, least-zoom, "
       "greatest-zoom, allowed\n"},
      {"layer..address=https://tile.example/{z}/{x}/{y}",
       "layer.: A map layer needs a name that no other layer has.\n"},
  };
  for (const auto& row : kRows) {
    const ProgramResult result = Set({"DisplayNumber=0", row.assignment});
    EXPECT_EQ(result.status, 2) << row.assignment;
    EXPECT_EQ(result.errors, row.message);
  }
  EXPECT_EQ(Set({"layer.Streets.address"}).status, 2);
  EXPECT_EQ(Run({"--settings"}).output, before);
}

}  // namespace
