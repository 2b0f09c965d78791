#include "platform/process_mark.h"

#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

TEST(ProcessMark, IsThereWhileTheProcessIs) {
  const std::string own = OwnProcessMark();
  EXPECT_TRUE(own.starts_with(std::to_string(getpid()) + "-")) << own;
  EXPECT_TRUE(IsProcessThere(own));
  EXPECT_EQ(OwnProcessMark(), own);
}

TEST(ProcessMark, TellsAProcessFromOneThatHadItsNumber) {
  EXPECT_FALSE(IsProcessThere(OwnProcessMark() + "1"));
  EXPECT_FALSE(IsProcessThere(std::to_string(getpid()) + "-1"));
}

TEST(ProcessMark, GoesWithItsProcessThoughNobodyHasWaitedForIt) {
  int marks[2];
  ASSERT_EQ(pipe(marks), 0);
  const pid_t child = fork();
  if (child == 0) {
    const std::string mark = OwnProcessMark();
    if (write(marks[1], mark.data(), mark.size()) < 0) _exit(1);
    for (;;) pause();
  }
  char mark[64];
  const ssize_t length = read(marks[0], mark, sizeof mark);
  ASSERT_GT(length, 0);
  const std::string of(mark, static_cast<size_t>(length));
  EXPECT_TRUE(IsProcessThere(of));
  kill(child, SIGKILL);
  siginfo_t ended{};
  waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT);
  EXPECT_FALSE(IsProcessThere(of));
  waitpid(child, nullptr, 0);
  EXPECT_FALSE(IsProcessThere(of));
  close(marks[0]);
  close(marks[1]);
}

TEST(ProcessMark, OtherTextsAreNone) {
  for (const char* const text : {"", "-", "1", "99999999-1", "self-1", "../1-1", "1-", "-1"})
    EXPECT_FALSE(IsProcessThere(text)) << text;
}

}  // namespace
