// Disks that are full, and file systems of which not everything can be asked.

#include <cerrno>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/app/failing_calls.h"
#include "tests/app/two_stops.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Content = std::map<std::string, std::string>;

// Files stand behind the three standard streams. The sanitizers write a few bytes to pipes of their
// own; they are not meant.
FailingCall FailingWrite(int error) { return {SYS_write, error, 3, 32}; }

const std::string kFull =
    ": The file cannot be write. Reason: the disk is full or the file would become too large; free "
    "some space and try again\n";

TEST(Disk, WithoutRoomKeepsTheOldTarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("b.itn", kItinerary);
  folder.Put("b.ov2", kPois);
  const Content before = folder.Content();
  const ProgramResult one =
      RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, FailingWrite(ENOSPC));
  EXPECT_EQ(one.status, 1);
  EXPECT_EQ(one.errors, folder.PathTo("a.ov2") + kFull);
  EXPECT_EQ(folder.Content(), before);
  const ProgramResult all =
      RunWithFailingCall({folder.Path().string(), "ov2", "--force"}, FailingWrite(ENOSPC));
  EXPECT_EQ(all.status, 1);
  EXPECT_EQ(all.errors, folder.PathTo("a.ov2") + kFull + folder.PathTo("b.ov2") + kFull +
                            folder.PathTo("b.ov2") + kFull +
                            "0 converted, 0 not recognised, 3 failed\n");
  EXPECT_EQ(folder.Content(), before);
}

TEST(Disk, FullInTheMiddleOfTheFileKeepsTheOldTarget) {
  const TemporaryFolder folder;
  std::string many;
  for (int i = 0; i < 2000; ++i) many += "1|2|Stop|0|\r\n";
  folder.Put("a.itn", many);
  folder.Put("a.ov2", "old");
  const ProgramResult result =
      RunConverter({folder.PathTo("a.itn"), "ov2", "--quiet"}, "ulimit -f 4; LC_ALL=C");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, folder.PathTo("a.ov2") + kFull);
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", many}, {"a.ov2", "old"}}));
}

TEST(Disk, FullDevice) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  const ProgramResult result = RunConverter({folder.PathTo("a.itn"), "ov2", "-o", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "/dev/full" + kFull);
}

TEST(Disk, ThatFailsKeepsTheOldTarget) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "old");
  const Content before = folder.Content();
  for (const FailingCall& call : {FailingWrite(EIO), FailingCall{SYS_renameat, EIO}}) {
    const ProgramResult result = RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, call);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, folder.PathTo("a.ov2") +
                                 ": The file cannot be write. Reason: a system error occurred\n");
    EXPECT_EQ(folder.Content(), before);
  }
}

TEST(Disk, WithoutLocks) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  folder.Put("a.ov2", "old");
  folder.Put(".a.ov2.corvane-tmp", "of another program, as nobody can tell");
  const ProgramResult result =
      RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, {SYS_flock, ENOLCK});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, Checked(folder.PathTo("a.ov2")));
  EXPECT_EQ(folder.Content(),
            (Content{{"a.itn", kItinerary},
                     {"a.ov2", kPois},
                     {".a.ov2.corvane-tmp", "of another program, as nobody can tell"}}));
}

TEST(Disk, WhoseFilesAllBelongToSomebodyElse) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  // The result is the user's id then, another one than that of the files.
  const ProgramResult result =
      RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, {SYS_geteuid, EPERM});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, Checked(folder.PathTo("a.ov2")));
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"a.ov2", kPois}}));
}

TEST(Disk, WithoutPermissionsThatCouldBeChanged) {
  const TemporaryFolder folder;
  folder.Put("a.itn", kItinerary);
  ASSERT_EQ(RunConverter({folder.PathTo("a.itn"), "ov2"}).status, 0);
  const ProgramResult same =
      RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, {SYS_fchmod, EPERM});
  EXPECT_EQ(same.status, 0);
  EXPECT_EQ(same.errors, Checked(folder.PathTo("a.ov2")));

  // A private file would be laid open.
  folder.Put("a.ov2", "private");
  fs::permissions(folder.PathTo("a.ov2"), fs::perms::owner_read | fs::perms::owner_write);
  const ProgramResult other =
      RunWithFailingCall({folder.PathTo("a.itn"), "ov2"}, {SYS_fchmod, EPERM});
  EXPECT_EQ(other.status, 1);
  EXPECT_EQ(other.errors, folder.PathTo("a.ov2") +
                              ": The file cannot be write. Reason: access denied; check the "
                              "permissions of the file and its folder\n");
  EXPECT_EQ(folder.Content(), (Content{{"a.itn", kItinerary}, {"a.ov2", "private"}}));
}

}  // namespace
