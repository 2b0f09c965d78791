// Several sources, folders with folders in them, and what they become.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class SeveralSources : public testing::Test {
 protected:
  SeveralSources() {
    m_folder.Put("a.itn", kItinerary);
    m_folder.Put("b.ov2", kPois);
  }
  std::string Path(const std::string& name) const { return m_folder.PathTo(name); }

  const TemporaryFolder m_folder;
};

TEST_F(SeveralSources, BecomeATargetEach) {
  m_folder.Put("c.wrong", "?");
  const ProgramResult result =
      RunConverter({Path("a.itn"), Path("b.ov2"), Path("c.wrong"), "gpx", "--output", Path("out")});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(m_folder.Has("out/a.gpx"));
  EXPECT_TRUE(m_folder.Has("out/b.gpx"));
  EXPECT_TRUE(result.errors.ends_with("2 converted, 1 not recognised, 0 failed\n"))
      << result.errors;
}

// Who names a file wants it converted, unlike all that lies in a folder.
TEST_F(SeveralSources, AreToldOfEvenWhenQuiet) {
  m_folder.Put("c.wrong", "?");
  const ProgramResult result =
      RunConverter({Path("a.itn"), Path("c.wrong"), "gpx", "--quiet", "--output", Path("out")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, Path("c.wrong") + ": Unknown file format.\n");
}

TEST_F(SeveralSources, AreKnownByTheirContentWithoutAnExtension) {
  m_folder.Put("c", kPois);
  EXPECT_EQ(
      RunConverter({Path("a.itn"), Path("c"), "kml", "--quiet", "--output", Path("out")}).status,
      0);
  EXPECT_TRUE(m_folder.Has("out/c.kml"));
}

TEST_F(SeveralSources, LeaveNoFolderBehindACheck) {
  EXPECT_EQ(
      RunConverter({Path("a.itn"), Path("b.ov2"), "gpx", "--check", "-o", Path("out")}).status, 0);
  EXPECT_EQ(m_folder.Content().size(), 2u);
}

TEST_F(SeveralSources, StandBesideTheirTargetsWithoutAFolder) {
  EXPECT_EQ(RunConverter({Path("a.itn"), Path("b.ov2"), "gpx", "--quiet"}).status, 0);
  EXPECT_TRUE(m_folder.Has("a.gpx"));
  EXPECT_TRUE(m_folder.Has("b.gpx"));
}

TEST_F(SeveralSources, MayLieInTheWorkingFolder) {
  const ProgramResult result =
      RunShell("cd " + Quoted(Path("")) + " && LC_ALL=C " +
               Quoted(CORVANE_BINARY_FOLDER "/bin/corvanemap") + " a.itn b.ov2 gpx");
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "2 converted, 0 not recognised, 0 failed\n");
  EXPECT_TRUE(m_folder.Has("a.gpx"));
}

TEST_F(SeveralSources, NeedAKeyInTheEnd) {
  const ProgramResult result = RunConverter({Path("a.itn"), Path("b.ov2"), "nokey"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "Unknown format key \"nokey\". \"corvanemap --formats\" lists the keys.\n");
  const ProgramResult missing = RunConverter({Path("a.itn"), Path("none.itn"), "gpx"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.errors, "The source \"" + Path("none.itn") + "\" does not exist.\n");
  EXPECT_FALSE(m_folder.Has("a.gpx"));
}

TEST_F(SeveralSources, AreNoneBehindAKeyThatComesSecond) {
  const ProgramResult result = RunConverter({Path("a.itn"), "gpx", Path("b.ov2"), "kml"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(m_folder.Has("a.gpx"));
  EXPECT_FALSE(m_folder.Has("b.kml"));
  EXPECT_TRUE(result.errors.starts_with(
      "Ignored, since the key is the second word: " + Path("b.ov2") + " kml\n"))
      << result.errors;
}

TEST_F(SeveralSources, BecomeOneItinerary) {
  const ProgramResult result = RunConverter(
      {Path("a.itn"), Path("b.ov2"), "itn", "--merge", "--quiet", "-o", Path("all.itn")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(m_folder.Get("all.itn"),
            "235222|4885661|Paris|4|\r\n434870|5085045|Brussels|0|\r\n"
            "235222|4885661|Paris|0|\r\n434870|5085045|Brussels|2|\r\n");
}

TEST_F(SeveralSources, BecomeNothingWhenOneCannotBeRead) {
  m_folder.Put("c.ov2", "");
  const ProgramResult result = RunConverter(
      {Path("a.itn"), Path("c.ov2"), "itn", "--merge", "--quiet", "-o", Path("all.itn")});
  EXPECT_EQ(result.status, 1);
  EXPECT_FALSE(m_folder.Has("all.itn"));
}

TEST_F(SeveralSources, ChangeAsOneItinerary) {
  ASSERT_EQ(RunConverter({Path("a.itn"), Path("b.ov2"), "itn", "--merge", "--unique", "--sort",
                          "--quiet", "-o", Path("all.itn")})
                .status,
            0);
  EXPECT_EQ(m_folder.Get("all.itn"), "434870|5085045|Brussels|4|\r\n235222|4885661|Paris|2|\r\n");
}

class FolderWithFolders : public testing::Test {
 protected:
  FolderWithFolders() {
    fs::create_directories(Path("in/deep/deeper"));
    m_folder.Put("in/a.itn", kItinerary);
    m_folder.Put("in/deep/deeper/a.itn", kItinerary);
    fs::create_directory_symlink("..", Path("in/deep/round"));
  }
  std::string Path(const std::string& name) const { return m_folder.PathTo(name); }

  const TemporaryFolder m_folder;
};

TEST_F(FolderWithFolders, IsConvertedFlatByDefault) {
  EXPECT_EQ(RunConverter({Path("in"), "ov2", "--quiet"}).status, 0);
  EXPECT_TRUE(m_folder.Has("in/a.ov2"));
  EXPECT_FALSE(m_folder.Has("in/deep/deeper/a.ov2"));
}

TEST_F(FolderWithFolders, IsConvertedWholeWhenAsked) {
  const ProgramResult result = RunConverter({Path("in"), "ov2", "--recursive"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(m_folder.Has("in/a.ov2"));
  EXPECT_TRUE(m_folder.Has("in/deep/deeper/a.ov2"));
  // The link, which leads round in a circle, counts as a file that nothing reads.
  EXPECT_EQ(result.errors, Path("in/deep/round") +
                               ": Unknown file format.\n2 converted, 1 not recognised, 0 failed\n");
}

TEST_F(FolderWithFolders, KeepsItsFoldersInTheTarget) {
  EXPECT_EQ(RunConverter({Path("in"), "ov2", "--recursive", "--quiet", "-o", Path("out")}).status,
            0);
  EXPECT_EQ(m_folder.Get("out/a.ov2"), kPois);
  EXPECT_EQ(m_folder.Get("out/deep/deeper/a.ov2"), kPois);
}

TEST_F(FolderWithFolders, LosesWhatAKilledRunHasLeftInTheTargets) {
  fs::create_directories(Path("out/deep/deeper"));
  m_folder.Put("out/.a.ov2.corvane-tmp", "half");
  m_folder.Put("out/deep/deeper/.b.ov2.corvane-tmp", "half");
  EXPECT_EQ(RunConverter({Path("in"), "ov2", "--recursive", "--quiet", "-o", Path("out")}).status,
            0);
  EXPECT_FALSE(m_folder.Has("out/.a.ov2.corvane-tmp"));
  EXPECT_FALSE(m_folder.Has("out/deep/deeper/.b.ov2.corvane-tmp"));
}

TEST_F(FolderWithFolders, IsOneOfSeveralSources) {
  m_folder.Put("b.itn", kItinerary);
  EXPECT_EQ(RunConverter({Path("b.itn"), Path("in"), "ov2", "--quiet", "-o", Path("out")}).status,
            0);
  EXPECT_TRUE(m_folder.Has("out/a.ov2"));
  EXPECT_TRUE(m_folder.Has("out/b.ov2"));
}

}  // namespace
