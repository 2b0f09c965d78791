#include "platform/output_file.h"

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/console.h"
#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> NamesIn(const TemporaryFolder& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder.Path()))
    names.push_back(entry.path().filename().string());
  return names;
}

TEST(OutputFile, AppearsAtCommit) {
  const TemporaryFolder folder;
  OutputFile file(folder.WidePathTo("a"));
  file.Write("one");
  file.Write("two");
  EXPECT_FALSE(folder.Has("a"));
  EXPECT_EQ(file.Commit(), 0u);
  EXPECT_EQ(folder.Get("a"), "onetwo");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, LeavesNothingWithoutCommit) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  {
    OutputFile file(folder.WidePathTo("a"));
    file.Write("new");
  }
  EXPECT_EQ(folder.Get("a"), "old");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, KeepsPermissionsAndFollowsLinks) {
  const TemporaryFolder folder;
  folder.Put("target", "old");
  fs::permissions(folder.PathTo("target"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("target", folder.PathTo("link"));
  OutputFile file(folder.WidePathTo("link"));
  file.Write("new");
  EXPECT_EQ(file.Commit(), 0u);
  EXPECT_TRUE(fs::is_symlink(folder.PathTo("link")));
  EXPECT_EQ(folder.Get("target"), "new");
  struct stat details {};
  stat(folder.PathTo("target").c_str(), &details);
  EXPECT_EQ(details.st_mode & 0777, 0600u);
}

TEST(OutputFile, FollowsALinkToAFileThatIsNotThereYet) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder.PathTo("link"));
  OutputFile file(folder.WidePathTo("link"));
  file.Write("new");
  EXPECT_EQ(file.Commit(), 0u);
  EXPECT_TRUE(fs::is_symlink(folder.PathTo("link")));
  EXPECT_EQ(folder.Get("target"), "new");
}

TEST(OutputFile, TellsWhyItCannotBeMade) {
  const TemporaryFolder folder;
  EXPECT_EQ(OutputFile(folder.WidePathTo("none/a")).Status(), 2u);
  EXPECT_EQ(OutputFile(folder.WidePathTo("")).Status(), 5u);
  OutputFile file(folder.WidePathTo("none/a"));
  file.Write("x");
  EXPECT_EQ(file.Commit(), 2u);
  EXPECT_EQ(file.Status(), 2u);
}

TEST(OutputFile, TakesTheLongestNames) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  OutputFile file(folder.WidePathTo(name));
  file.Write("x");
  EXPECT_EQ(file.Commit(), 0u);
  EXPECT_EQ(folder.Get(name), "x");
  OutputFile tooLong(folder.WidePathTo(std::string(256, 'n')));
  EXPECT_EQ(tooLong.Commit(), 206u);
}

TEST(OutputFile, UsesUpWhatAKilledRunLeft) {
  const TemporaryFolder folder;
  folder.Put(".a.corvane-tmp", std::string(1000, 'x'));
  OutputFile file(folder.WidePathTo("a"));
  file.Write("new");
  EXPECT_EQ(file.Commit(), 0u);
  EXPECT_EQ(folder.Get("a"), "new");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, LeavesAloneWhatStandsUnderTheTemporaryName) {
  const TemporaryFolder folder;
  folder.Put("precious", "precious");
  fs::create_hard_link(folder.PathTo("precious"), folder.PathTo(".a.corvane-tmp"));
  fs::create_symlink("precious", folder.PathTo(".b.corvane-tmp"));
  fs::create_directory(folder.PathTo(".c.corvane-tmp"));
  ASSERT_EQ(mkfifo(folder.PathTo(".d.corvane-tmp").c_str(), 0666), 0);
  for (const char* name : {"a", "b", "c", "d"}) {
    OutputFile file(folder.WidePathTo(name));
    file.Write("new");
    EXPECT_EQ(file.Commit(), 0u) << name;
    EXPECT_EQ(folder.Get(name), "new") << name;
  }
  EXPECT_EQ(folder.Get("precious"), "precious");
  EXPECT_EQ(folder.Get(".a.corvane-tmp"), "precious");
}

TEST(OutputFile, LeavesLinksInACircle) {
  const TemporaryFolder folder;
  fs::create_symlink("b", folder.PathTo("a"));
  fs::create_symlink("a", folder.PathTo("b"));
  OutputFile file(folder.WidePathTo("a"));
  EXPECT_NE(file.Status(), 0u);
  EXPECT_NE(file.Commit(), 0u);
  EXPECT_TRUE(fs::is_symlink(folder.PathTo("a")));
  EXPECT_TRUE(fs::is_symlink(folder.PathTo("b")));
}

TEST(OutputFile, WritesToAPipeThroughTheLinksThatLeadToIt) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  OutputFile file(WidePath("/dev/fd/" + std::to_string(ends[1])));
  file.Write("new");
  EXPECT_EQ(file.Commit(), 0u);
  char read[4] = {};
  EXPECT_EQ(::read(ends[0], read, 3), 3);
  EXPECT_STREQ(read, "new");
  close(ends[0]);
  close(ends[1]);
}

TEST(OutputFile, TwoWritersOfOneTargetDoNotMix) {
  const TemporaryFolder folder;
  OutputFile first(folder.WidePathTo("a"));
  OutputFile second(folder.WidePathTo("a"));
  first.Write("first");
  second.Write("second");
  EXPECT_EQ(first.Commit(), 0u);
  EXPECT_EQ(folder.Get("a"), "first");
  EXPECT_EQ(second.Commit(), 0u);
  EXPECT_EQ(folder.Get("a"), "second");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, FileSizeLimitLeavesTheOldFile) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  const pid_t child = fork();
  if (child == 0) {
    PrepareProcess();
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    OutputFile file(folder.WidePathTo("a"));
    file.Write(std::string(10000, 'x'));
    _exit(static_cast<int>(file.Commit()));
  }
  EXPECT_EQ(WaitFor(child), 112);
  EXPECT_EQ(folder.Get("a"), "old");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

TEST(OutputFile, KillInTheMiddleLeavesTheOldFile) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  const pid_t child = fork();
  if (child == 0) {
    OutputFile file(folder.WidePathTo("a"));
    file.Write(std::string(100000, 'x'));
    if (write(pipeEnds[1], "w", 1) != 1) _exit(1);
    for (;;) pause();
  }
  char byte = 0;
  ASSERT_EQ(read(pipeEnds[0], &byte, 1), 1);
  kill(child, SIGKILL);
  EXPECT_EQ(WaitFor(child), 128 + SIGKILL);
  close(pipeEnds[0]);
  close(pipeEnds[1]);
  EXPECT_EQ(folder.Get("a"), "old");

  OutputFile next(folder.WidePathTo("a"));
  next.Write("new");
  EXPECT_EQ(next.Commit(), 0u);
  EXPECT_EQ(folder.Get("a"), "new");
  EXPECT_EQ(NamesIn(folder), std::vector<std::string>{"a"});
}

// In a folder without write permission the file itself is overwritten. Root may write anywhere,
// so the child becomes somebody else.
TEST(OutputFile, WritesInPlaceWhereTheFolderIsReadOnly) {
  const TemporaryFolder folder;
  folder.Put("a", "something longer");
  fs::permissions(folder.PathTo("a"), fs::perms(0666));
  fs::permissions(folder.Path(), fs::perms(0555));
  const pid_t child = fork();
  if (child == 0) {
    if (getuid() == 0 && setuid(65534) != 0) _exit(1);
    OutputFile file(folder.WidePathTo("a"));
    file.Write("new");
    if (file.Commit() != 0) _exit(2);
    _exit(OutputFile(folder.WidePathTo("b")).Status() == 5 ? 0 : 3);
  }
  EXPECT_EQ(WaitFor(child), 0);
  EXPECT_EQ(folder.Get("a"), "new");
  fs::permissions(folder.Path(), fs::perms(0755));
}

TEST(OutputFile, LeavesAReadOnlyFileAlone) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  fs::permissions(folder.PathTo("a"), fs::perms(0444));
  fs::permissions(folder.Path(), fs::perms(0777));
  const pid_t child = fork();
  if (child == 0) {
    if (getuid() == 0 && setuid(65534) != 0) _exit(1);
    OutputFile file(folder.WidePathTo("a"));
    _exit(file.Status() == 5 ? 0 : 2);
  }
  EXPECT_EQ(WaitFor(child), 0);
  EXPECT_EQ(folder.Get("a"), "old");
}

TEST(OutputFile, WritesStraightToWhatIsNoRegularFile) {
  OutputFile file(u"/dev/null");
  file.Write("x");
  EXPECT_EQ(file.Commit(), 0u);
  OutputFile full(u"/dev/full");
  full.Write("x");
  EXPECT_EQ(full.Commit(), 112u);
}

}  // namespace
