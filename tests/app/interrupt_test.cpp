// What is left behind by a conversion that is interrupted or killed: nothing, or nothing for long.

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// An itinerary that takes a while.
std::string LongItinerary() {
  std::string text;
  for (int i = 0; i < 150000; ++i) text += std::to_string(100000 + i) + "|4800000|Stop|0|\r\n";
  return text;
}

// Starts the converter on "trip.itn" of a folder, with another for temporary files below it.
pid_t Start(const TemporaryFolder& folder, const std::string& arguments) {
  const std::string command = "cd " + Quoted(folder.PathTo("")) +
                              " && LC_ALL=C TMPDIR=" + Quoted(folder.PathTo("tmp")) + " exec " +
                              Quoted(CORVANE_BINARY_FOLDER "/bin/corvanemap") + " trip.itn kml " +
                              arguments + " >errors 2>&1";
  const pid_t child = fork();
  if (child == 0) {
    execl("/bin/bash", "bash", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  return child;
}

bool WaitUntil(const std::function<bool()>& holds) {
  for (int i = 0; i < 6000; ++i) {
    if (holds()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

class Interrupt : public testing::TestWithParam<int> {
 protected:
  Interrupt() {
    m_folder.Put("trip.itn", LongItinerary());
    fs::create_directories(m_folder.PathTo("tmp"));
  }

  const TemporaryFolder m_folder;
};

TEST_P(Interrupt, ClearsTheScratchOfACheck) {
  const pid_t child = Start(m_folder, "--check");
  ASSERT_TRUE(WaitUntil([&] { return !fs::is_empty(m_folder.PathTo("tmp")); }));
  kill(child, GetParam());
  EXPECT_EQ(WaitFor(child), 128 + GetParam());
  EXPECT_TRUE(fs::is_empty(m_folder.PathTo("tmp")));
  EXPECT_EQ(m_folder.Get("errors"), "");
}

TEST_P(Interrupt, ClearsAnUnfinishedTarget) {
  const pid_t child = Start(m_folder, "");
  const std::string unfinished = m_folder.PathTo(".trip.kml.corvane-tmp");
  ASSERT_TRUE(WaitUntil([&] { return fs::exists(unfinished); }));
  kill(child, GetParam());
  EXPECT_EQ(WaitFor(child), 128 + GetParam());
  EXPECT_FALSE(fs::exists(unfinished));
  EXPECT_FALSE(m_folder.Has("trip.kml"));
  EXPECT_EQ(m_folder.Get("errors"), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, Interrupt, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(Killed, LeavesNothingBeyondTheNextRun) {
  const TemporaryFolder folder;
  folder.Put("trip.itn", LongItinerary());
  fs::create_directories(folder.PathTo("tmp"));
  const std::string unfinished = folder.PathTo(".trip.kml.corvane-tmp");
  pid_t child = Start(folder, "");
  ASSERT_TRUE(WaitUntil([&] { return fs::exists(unfinished); }));
  kill(child, SIGKILL);
  WaitFor(child);
  child = Start(folder, "--check");
  ASSERT_TRUE(WaitUntil([&] { return !fs::is_empty(folder.PathTo("tmp")); }));
  kill(child, SIGKILL);
  WaitFor(child);
  ASSERT_TRUE(fs::exists(unfinished));
  ASSERT_FALSE(fs::is_empty(folder.PathTo("tmp")));

  folder.Put("short.itn", "1|2|A|4|\r\n");
  const std::string environment = "LC_ALL=C TMPDIR=" + folder.PathTo("tmp");
  EXPECT_EQ(RunConverter({folder.PathTo("short.itn"), "ov2"}, environment).status, 0);
  EXPECT_FALSE(fs::exists(unfinished));
  EXPECT_TRUE(fs::is_empty(folder.PathTo("tmp")));
}

// A run that lives keeps what it works on.
TEST(Killed, LeavesTheOthersAlone) {
  const TemporaryFolder folder;
  folder.Put("trip.itn", LongItinerary());
  folder.Put("short.itn", "1|2|A|4|\r\n");
  fs::create_directories(folder.PathTo("tmp"));
  const pid_t child = Start(folder, "--quiet");
  ASSERT_TRUE(WaitUntil([&] { return fs::exists(folder.PathTo(".trip.kml.corvane-tmp")); }));
  kill(child, SIGSTOP);
  EXPECT_EQ(RunConverter({folder.PathTo("short.itn"), "ov2"}).status, 0);
  EXPECT_TRUE(fs::exists(folder.PathTo(".trip.kml.corvane-tmp")));
  kill(child, SIGCONT);
  EXPECT_EQ(WaitFor(child), 0);
  EXPECT_TRUE(folder.Has("trip.kml"));
}

}  // namespace
