// Sources and targets that the user may not touch.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Content = std::map<std::string, std::string>;

constexpr fs::perms kReadOnly = fs::perms::owner_read;
constexpr fs::perms kReadOnlyFolder = fs::perms::owner_read | fs::perms::owner_exec;
const std::string kAccessDenied =
    "Reason: access denied; check the permissions of the file and its folder\n";

// Runs the converter as a user to whom permissions apply: root gives up passing them over.
ProgramResult RunAsUser(const std::vector<std::string>& arguments,
                        const std::string& before = "LC_ALL=C") {
  const std::string user =
      geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search" : "env";
  return RunConverter(arguments, before + "; export LC_ALL=C; " + user);
}

/// Other permissions as long as this lives.
class Permissions {
 public:
  Permissions(const std::string& path, fs::perms changed) : m_path(path) {
    fs::permissions(m_path, changed);
  }
  ~Permissions() { fs::permissions(m_path, fs::perms::owner_all); }
  Permissions(const Permissions&) = delete;
  Permissions& operator=(const Permissions&) = delete;

 private:
  const std::string m_path;
};

TEST(Access, NothingIsWrittenIntoAReadOnlyFolder) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  fs::create_directory(folder.PathTo("out"));
  const Permissions readOnly(folder.PathTo("out"), kReadOnlyFolder);
  const std::string target = folder.PathTo("out/a.ov2");
  const ProgramResult result = RunAsUser({folder.PathTo("a.itn"), "ov2", "-o", target});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, target + ": The file cannot be write. " + kAccessDenied);
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"out/", ""}}));
}

TEST(Access, AFolderTellsOfEveryFileThatCannotBeWritten) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  folder.Put("in/b.itn", kItinerary);
  folder.Put("in/b.ov2", "old");
  const Permissions readOnly(folder.PathTo("in"), kReadOnlyFolder);
  const ProgramResult result = RunAsUser({folder.PathTo("in"), "ov2", "--force"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("in/a.ov2") + ": The file cannot be write. " +
                               kAccessDenied + folder.PathTo("in/b.ov2") +
                               ": this file of the folder is replaced by the conversion of " +
                               folder.PathTo("in/b.itn") +
                               "\n2 converted, 0 not recognised, 1 failed\n");
  EXPECT_EQ(
      folder.Content(),
      (Content{
          {"in/", ""}, {"in/a.itn", kItinerary}, {"in/b.itn", kItinerary}, {"in/b.ov2", kPois}}));
}

TEST(Access, NewFoldersInAReadOnlyOneAreRefused) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  fs::create_directory(folder.PathTo("out"));
  const Permissions readOnly(folder.PathTo("out"), kReadOnlyFolder);
  const std::string output = folder.PathTo("out/new/deep");
  const ProgramResult result = RunAsUser({folder.PathTo("in"), "ov2", "-o", output});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, output + ": The file cannot be write. " + kAccessDenied);
  EXPECT_EQ(folder.Content(), (Content{{"in/", ""}, {"in/a.itn", kItinerary}, {"out/", ""}}));
}

TEST(Access, AReadOnlyTargetStays) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "old");
  const Permissions readOnly(folder.PathTo("a.ov2"), kReadOnly);
  const ProgramResult result = RunAsUser({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") + ": The file cannot be write. " + kAccessDenied);
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"a.ov2", "old"}}));
}

TEST(Access, AWritableTargetInAReadOnlyFolderIsWrittenInPlace) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", std::string(10000, 'x'));
  const Permissions readOnly(folder.Path().string(), kReadOnlyFolder);
  const ProgramResult result = RunAsUser({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, Checked(folder.PathTo("a.ov2")));
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"a.ov2", kPois}}));
}

TEST(Access, WhatDoesNotFitInPlaceLeavesTheOldTarget) {
  std::string many;
  for (int i = 0; i < 2000; ++i) many += "1|2|Stop|0|\r\n";
  for (const size_t size : {size_t{3}, size_t{10000}}) {
    const TemporaryFolder folder;
    folder.Put("a.itn", many);
    folder.Put("a.ov2", std::string(size, 'x'));
    const Permissions readOnly(folder.Path().string(), kReadOnlyFolder);
    const ProgramResult result =
        RunAsUser({folder.PathTo("a.itn"), "ov2", "--quiet"}, "ulimit -f 4");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              folder.PathTo("a.ov2") +
                  ": The file cannot be write. Reason: the disk is full or the file would become "
                  "too large; free some space and try again\n");
    EXPECT_EQ(folder.Content(), (Content{{"a.itn", many}, {"a.ov2", std::string(size, 'x')}}));
  }
}

// What is written in place is collected in memory first.
#ifndef CORVANE_SANITIZED
TEST(Access, WhatDoesNotFitIntoMemoryLeavesTheOldTarget) {
  std::string many;
  for (int i = 0; i < 300000; ++i) many += "100000|200000|Stop|0|\r\n";
  const TemporaryFolder folder;
  folder.Put("a.itn", many);
  folder.Put("a.gpx", "old");
  const Permissions readOnly(folder.Path().string(), kReadOnlyFolder);
  const ProgramResult result =
      RunAsUser({folder.PathTo("a.itn"), "gpx", "--quiet"}, "ulimit -v 120000");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.gpx") +
                               ": The file cannot be write. Reason: there is not enough memory; "
                               "close other programs and try again\n");
  EXPECT_TRUE(folder.Get("a.gpx") == "old");
}
#endif

TEST(Access, AFolderIsNoTarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  fs::create_directory(folder.PathTo("a.ov2"));
  const ProgramResult result = RunAsUser({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                               ": The file cannot be write. Reason: it is a folder, not a file\n");
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"a.ov2/", ""}}));
}

TEST(Access, AFileIsNoFolderForTargets) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  folder.Put("out", "a file");
  const ProgramResult result =
      RunAsUser({folder.PathTo("in"), "ov2", "--output", folder.PathTo("out")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("out") +
                               ": The file cannot be write. Reason: it is a file, not a folder; "
                               "give a folder with --output\n");
  const ProgramResult below =
      RunAsUser({folder.PathTo("in/a.itn"), "ov2", "--output", folder.PathTo("out/a.ov2")});
  EXPECT_EQ(below.status, 1);
  EXPECT_EQ(below.errors, folder.PathTo("out/a.ov2") +
                              ": The file cannot be write. Reason: no such file or folder\n");
  EXPECT_EQ(folder.Content(), (Content{{"in/", ""}, {"in/a.itn", kItinerary}, {"out", "a file"}}));
}

TEST(Access, ASourceThatMayNotBeRead) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("b.itn", kItinerary);
  const Permissions hidden(folder.PathTo("a.itn"), fs::perms::none);
  const std::string message =
      folder.PathTo("a.itn") + ": The file cannot be read. " + kAccessDenied;
  const ProgramResult result = RunAsUser({folder.PathTo("a.itn"), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, message);
  EXPECT_FALSE(folder.Has("a.ov2"));
  const ProgramResult inspected = RunAsUser({"--inspect", folder.PathTo("a.itn")});
  EXPECT_EQ(inspected.status, 1);
  EXPECT_EQ(inspected.errors, message);
  const ProgramResult all = RunAsUser({folder.Path().string(), "ov2"});
  EXPECT_EQ(all.status, 1);
  EXPECT_EQ(all.errors, message + "1 converted, 0 not recognised, 1 failed\n");
  EXPECT_EQ(folder.Get("b.ov2"), kPois);
}

// It may well be there: to say that it does not exist would send its owner looking.
TEST(Access, ASourceInAClosedFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  const Permissions closed(folder.PathTo("in"), fs::perms::none);
  const std::string source = folder.PathTo("in/a.itn");
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{source, "ov2"}, {"--inspect", source}}) {
    const ProgramResult result = RunAsUser(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, source + ": The file cannot be read. " + kAccessDenied);
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
