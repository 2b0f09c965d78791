// What a conversion may replace: its own source only when nothing is lost with it, and nothing else
// that lay beside the files of a run.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "tests/app/failing_calls.h"
#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

const std::string kOneLineTooMany = kItinerary + "broken line\r\n";

TEST(OwnSource, IsReplacedWhenNothingIsLost) {
  const TemporaryFolder folder;
  // Lines that end in LF are written with CR LF.
  folder.Put("a.itn", "235222|4885661|Paris|4|\n434870|5085045|Brussels|2|\n");
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "itn"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, Checked(folder.PathTo("a.itn")));
  EXPECT_EQ(folder.Get("a.itn"), kItinerary);
  EXPECT_EQ(folder.Content().size(), 1u);
}

TEST(OwnSource, StaysWhenSomethingIsLost) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kOneLineTooMany);
  const std::string path = folder.PathTo("a.itn");
  const std::string refusal = path +
                              ": the target is the source itself, and something of it would be "
                              "lost; nothing was written. Give another target with --output, or "
                              "--force.\n";
  const ProgramResult result = RunConverter({path, "itn"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("passed over"), std::string::npos) << result.errors;
  EXPECT_TRUE(result.errors.ends_with(refusal)) << result.errors;
  EXPECT_EQ(folder.Get("a.itn"), kOneLineTooMany);

  const ProgramResult quiet = RunConverter({path, "itn", "--quiet"});
  EXPECT_EQ(quiet.status, 1);
  EXPECT_EQ(quiet.errors, refusal);
  EXPECT_EQ(folder.Get("a.itn"), kOneLineTooMany);

  EXPECT_EQ(RunConverter({path, "itn", "--quiet", "--force"}).status, 0);
  EXPECT_EQ(folder.Get("a.itn"), kItinerary);
}

// Letters that the format cannot hold would be gone for good.
TEST(OwnSource, StaysWhenItsNamesWouldChange) {
  const TemporaryFolder folder;
  const std::string source =
      "\xEF\xBB\xBF"
      "235222|4885661|\u6771\u4eac|4|\r\n";
  folder.Put("a.itn", source);
  EXPECT_EQ(RunConverter({folder.PathTo("a.itn"), "itn", "--quiet"}).status, 1);
  EXPECT_EQ(folder.Get("a.itn"), source);
}

TEST(OwnSource, StaysWhenPointsAreLeftOut) {
  const TemporaryFolder folder;
  const std::string line = "100000|4800000|A|4|\r\n100000|4800001|B|0|\r\n100000|4800002|C|2|\r\n";
  folder.Put("a.itn", line);
  const std::string path = folder.PathTo("a.itn");
  const ProgramResult result = RunConverter({path, "itn", "--simplify", "1000"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, path +
                               ": the target is the same file as the source; give another with "
                               "--output, or --force.\n");
  EXPECT_EQ(folder.Get("a.itn"), line);
  EXPECT_EQ(RunConverter({path, "itn", "--simplify", "1000", "--force"}).status, 0);
  EXPECT_EQ(folder.Get("a.itn"), "100000|4800000|A|4|\r\n100000|4800002|C|2|\r\n");
}

// What cannot be read back cannot be known to be whole.
TEST(OwnSource, StaysWhereTheTargetCannotBeChecked) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  ASSERT_EQ(RunConverter({folder.PathTo("a.itn"), "dat"}).status, 0);
  const std::string before = folder.Get("a.dat");
  EXPECT_EQ(RunConverter({folder.PathTo("a.dat"), "dat"}).status, 1);
  EXPECT_EQ(folder.Get("a.dat"), before);
}

TEST(OwnSource, IsAnyOfThoseThatAreMerged) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("b.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), folder.PathTo("b.itn"), "itn",
                                             "--merge", "-o", folder.PathTo("b.itn")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Get("a.itn"), kItinerary);
  EXPECT_EQ(folder.Get("b.itn"), kItinerary);
}

TEST(Folder, KeepsWhatLayInItBefore) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "mine");
  folder.Put("b.itn", kItinerary);
  const std::string kept = ": kept, since it was there before; --force replaces it.\n";
  const std::string unread = folder.PathTo("a.ov2") + ": The file cannot be read.\n";
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") + kept + unread +
                               "1 converted, 0 not recognised, 1 failed, 1 kept\n");
  EXPECT_EQ(folder.Get("a.ov2"), "mine");
  EXPECT_EQ(folder.Get("b.ov2"), kPois);

  const ProgramResult again = RunConverter({folder.PathTo(""), "ov2", "--quiet"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.errors, folder.PathTo("a.ov2") + kept + unread + folder.PathTo("b.ov2") + kept);

  EXPECT_EQ(RunConverter({folder.PathTo(""), "ov2", "--force", "--quiet"}).status, 0);
  EXPECT_EQ(folder.Get("a.ov2"), kPois);
}

// Two trips of one name, of which one is in the wanted format already.
TEST(Folder, KeepsASourceThatHasTheNameOfATarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", "100000|200000|Other|4|\r\n");
  folder.Put("a.ov2", kPois);
  const ProgramResult result = RunConverter({folder.PathTo(""), "ov2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Get("a.ov2"), kPois);
  EXPECT_TRUE(result.errors.ends_with("1 converted, 0 not recognised, 0 failed, 1 kept\n"))
      << result.errors;
}

TEST(Folder, MayReplaceOldResultsInAnother) {
  const TemporaryFolder folder;
  fs::create_directories(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  fs::create_directories(folder.PathTo("out"));
  folder.Put("out/a.ov2", "old");
  EXPECT_EQ(RunConverter({folder.PathTo("in"), "ov2", "-o", folder.PathTo("out")}).status, 0);
  EXPECT_EQ(folder.Get("out/a.ov2"), kPois);
}

TEST(Folder, KeepsItsFilesWhenItIsItsOwnTarget) {
  const TemporaryFolder folder;
  fs::create_directories(folder.PathTo("in"));
  folder.Put("in/a.itn", kItinerary);
  folder.Put("in/a.ov2", "mine");
  fs::create_directory_symlink(folder.PathTo("in"), folder.PathTo("out"));
  EXPECT_EQ(RunConverter({folder.PathTo("in"), "ov2", "-o", folder.PathTo("out")}).status, 1);
  EXPECT_EQ(folder.Get("in/a.ov2"), "mine");
}

TEST(Folder, OfTheTargetsHoldsNoSourceThatIsReplaced) {
  const TemporaryFolder folder;
  fs::create_directories(folder.PathTo("x"));
  fs::create_directories(folder.PathTo("y"));
  folder.Put("x/a.itn", kItinerary);
  folder.Put("y/a.itn", "100000|200000|Other|4|\r\n");
  const ProgramResult result = RunConverter(
      {folder.PathTo("x/a.itn"), folder.PathTo("y/a.itn"), "itn", "--output", folder.PathTo("y")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(folder.Get("y/a.itn"), "100000|0200000|Other|2|\r\n");
  EXPECT_NE(result.errors.find("1 kept"), std::string::npos) << result.errors;
}

TEST(Durability, FailsWhenTheDiskDoes) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "old");
  const FailingCall noSync{SYS_fsync, EIO};
  const ProgramResult result = RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, noSync);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                               ": The file cannot be write. Reason: a system error occurred\n");
  EXPECT_EQ(folder.Get("a.ov2"), "old");
  EXPECT_EQ(folder.Content().size(), 2u);
  EXPECT_EQ(RunWithFailingCall({folder.PathTo("a.itn"), "ov2", "--no-sync"}, noSync).status, 0);
  EXPECT_EQ(folder.Get("a.ov2"), kPois);
}

// Some file systems have nothing to sync.
TEST(Durability, DoesWithoutWhereThereIsNone) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  EXPECT_EQ(RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, {SYS_fsync, EINVAL}).status, 0);
}

TEST(Durability, IsThereBeforeAFolderIsSaidToBeDone) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const FailingCall noSync{SYS_syncfs, EIO};
  const ProgramResult result = RunWithFailingCall({folder.PathTo(""), "ov2"}, noSync);
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.ends_with("1 converted, 0 not recognised, 1 failed\n"))
      << result.errors;
  fs::remove(folder.PathTo("a.ov2"));
  EXPECT_EQ(RunWithFailingCall({folder.PathTo(""), "ov2", "--no-sync"}, noSync).status, 0);
}

TEST(PartsOfASplit, HaveTheNumberInTheirOwnName) {
  const TemporaryFolder folder;
  folder.Put("trip.itn", "1|2|A|4|\r\n3|4|B|0|\r\n5|6|C|2|\r\n");
  fs::create_directories(folder.PathTo("v1.5"));
  for (const std::string name : {"v1.5/day", "day", ".day"}) {
    const ProgramResult result =
        RunConverter({folder.PathTo("trip.itn"), "itn", "--split", "2", "-o", folder.PathTo(name)});
    EXPECT_EQ(result.status, 0) << name;
    EXPECT_EQ(folder.Get(name + "_1"), "000001|0000002|A|4|\r\n000003|0000004|B|2|\r\n") << name;
    EXPECT_EQ(folder.Get(name + "_2"), "000003|0000004|B|4|\r\n000005|0000006|C|2|\r\n") << name;
  }
  // With an ending the number stands in front of it, and a name in the working folder is one too.
  EXPECT_EQ(RunConverter({folder.PathTo("trip.itn"), "itn", "--split", "2", "-o",
                          folder.PathTo("v1.5/day.itn")})
                .status,
            0);
  EXPECT_TRUE(folder.Has("v1.5/day_1.itn"));
  const std::string here = "cd " + Quoted(folder.PathTo("")) + " && LC_ALL=C " +
                           Quoted(CORVANE_BINARY_FOLDER "/bin/corvanemap") +
                           " trip.itn itn --split 2 -o here";
  EXPECT_EQ(RunShell(here).status, 0);
  EXPECT_TRUE(folder.Has("here_1"));
  EXPECT_TRUE(folder.Has("here_2"));
}

}  // namespace
