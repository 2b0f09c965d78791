// Many files, little memory, and being killed at any moment.

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

std::string Example(const std::string& name) {
  std::ifstream file(std::string(CORVANE_SOURCE_FOLDER "/examples/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// 9,000 trips in nine formats, 700 files that are damaged, 300 that hold nothing.
void FillFolder(const TemporaryFolder& folder) {
  fs::create_directory(folder.PathTo("in"));
  const std::vector<std::string> kTrips = {
      "alsace-wine-villages.itn", "dutch-city-tour.ov2", "kyoto-temples.gpx",
      "romantic-road.bcr",        "swiss-passes.gdb",    "dolomite-passes.kml",
      "baltic-coast.osm",         "elbe-valley.tour",    "norwegian-fjords.mps"};
  for (const std::string& trip : kTrips) {
    const std::string content = Example(trip);
    ASSERT_FALSE(content.empty()) << trip;
    for (int i = 0; i < 1000; ++i) folder.Put("in/" + std::to_string(i) + "-" + trip, content);
  }
  const std::string gpx = Example("kyoto-temples.gpx");
  for (int i = 0; i < 400; ++i)
    folder.Put("in/cut" + std::to_string(i) + ".gpx", gpx.substr(0, gpx.size() / 2));
  for (int i = 0; i < 300; ++i) {
    folder.Put("in/noise" + std::to_string(i) + ".gdb", "no map file");
    folder.Put("in/empty" + std::to_string(i) + ".itn", "");
  }
}

void ExpectAllConverted(const std::string& environment) {
  const TemporaryFolder folder;
  FillFolder(folder);
  const ProgramResult result =
      RunConverter({folder.PathTo("in"), "gpx", "--output", folder.PathTo("out")}, environment);
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("9000 converted, 300 not recognised, 700 failed\n"),
            std::string::npos)
      << result.errors.substr(result.errors.size() - std::min<size_t>(result.errors.size(), 500));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.PathTo("out")), {}), 9000);
}

TEST(Load, ConvertsAFolderOfTenThousandFiles) { ExpectAllConverted("LC_ALL=C"); }

// A sanitizer reserves more address space than any limit leaves.
#ifndef CORVANE_SANITIZED
TEST(Load, ConvertsThemInAQuarterOfAGigabyte) { ExpectAllConverted("ulimit -v 262144; LC_ALL=C"); }

// Without points, lists take little more than the pointers to them.
TEST(Load, ConvertsAMillionEmptyListsInAQuarterOfAGigabyte) {
  const TemporaryFolder folder;
  std::string content = "<osm><node id=\"1\" lat=\"1\" lon=\"2\"/>";
  for (int i = 0; i < 1000000; ++i) content += "<way/>";
  folder.Put("a.osm", content + "<way id=\"7\"><nd ref=\"1\"/></way></osm>");
  const ProgramResult result = RunConverter({folder.PathTo("a.osm"), "itn", "--list", "routes"},
                                            "ulimit -v 262144; LC_ALL=C");
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(folder.Get("a.itn"), "200000|0100000||2|\r\n");
}

// A file that is one hole: every few zeros could be a record of these formats.
TEST(Load, AHoleIsNoItinerary) {
  const TemporaryFolder folder;
  for (const std::string name : {"a.dat", "a.trl"}) {
    folder.Put(name, "");
    fs::resize_file(folder.PathTo(name), uintmax_t{256} << 20);
    const ProgramResult result =
        RunConverter({"--inspect", "--json", folder.PathTo(name)}, "ulimit -v 524288; LC_ALL=C");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("\"status\": 13,"), std::string::npos) << result.output;
  }
}

TEST(Load, TellsWhereMemoryRunsOut) {
  const TemporaryFolder folder;
  std::string content;
  for (int i = 0; i < 1000000; ++i) content += "1|2|a name of some length in memory|0|\n";
  folder.Put("a.itn", content);
  folder.Put("a.ov2", "old");
  const ProgramResult result =
      RunConverter({folder.PathTo("a.itn"), "ov2", "--quiet"}, "ulimit -v 131072; LC_ALL=C");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("The file cannot be read."), std::string::npos) << result.errors;
  EXPECT_EQ(folder.Get("a.ov2"), "old");
}
#endif

TEST(Load, KilledAtAnyMomentLeavesWholeTargets) {
  const TemporaryFolder folder;
  std::string content;
  for (int i = 0; i < 20000; ++i) content += "100000|200000|Stop|0|\r\n";
  folder.Put("a.itn", content);
  const std::string old = "old target";
  const std::vector<std::string> arguments = {folder.PathTo("a.itn"), "ov2", "--quiet"};
  const auto start = std::chrono::steady_clock::now();
  ASSERT_EQ(RunConverter(arguments).status, 0);
  const auto duration = std::chrono::steady_clock::now() - start;
  const std::string whole = folder.Get("a.ov2");
  ASSERT_GT(whole.size(), 300000u);

  std::mt19937 random(1);  // the moments differ from run to run all the same
  std::uniform_real_distribution<double> moment(0.0, 1.0);
  for (int i = 0; i < 200; ++i) {
    folder.Put("a.ov2", old);
    const pid_t child = fork();
    if (child == 0) {
      execl(CORVANE_BINARY_FOLDER "/bin/corvanemap", "corvanemap", arguments[0].c_str(), "ov2",
            "--quiet", nullptr);
      _exit(127);
    }
    std::this_thread::sleep_for(duration * moment(random));
    kill(child, SIGKILL);
    WaitFor(child);
    const std::string found = folder.Get("a.ov2");
    ASSERT_TRUE(found == old || found == whole) << found.size();
  }
  ASSERT_EQ(RunConverter(arguments).status, 0);
  EXPECT_EQ(folder.Get("a.ov2"), whole);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
}

}  // namespace
