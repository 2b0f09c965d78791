#include "platform/child_process.h"

#include <gtest/gtest.h>

namespace {

ChildResult RunAndGather(const std::vector<std::string>& arguments, std::string& output) {
  return RunChild(arguments, [&output](std::string_view bytes) {
    output += bytes;
    return true;
  });
}

TEST(ChildProcess, GivesBothOutputsAndTheExitCode) {
  std::string output;
  const ChildResult result = RunAndGather({"sh", "-c", "echo out; echo err >&2; exit 7"}, output);
  EXPECT_EQ(result.status, 0u);
  EXPECT_EQ(result.exitCode, 7);
  EXPECT_FALSE(result.interrupted);
  EXPECT_EQ(output, "out\nerr\n");
}

TEST(ChildProcess, LetsNoShellSeeItsArguments) {
  std::string output;
  RunAndGather({"printf", "%s|", "a b", "$HOME", "`id`", "*"}, output);
  EXPECT_EQ(output, "a b|$HOME|`id`|*|");
}

TEST(ChildProcess, HasNothingToRead) {
  std::string output;
  EXPECT_EQ(RunAndGather({"cat"}, output).exitCode, 0);
  EXPECT_EQ(output, "");
}

TEST(ChildProcess, TellsWhenThereIsNoSuchProgram) {
  std::string output;
  EXPECT_EQ(RunAndGather({"no-such-program-of-ours"}, output).status, 2u);
}

TEST(ChildProcess, EndsWhenNobodyListensAnyMore) {
  const ChildResult result =
      RunChild({"sh", "-c", "echo begun; sleep 60"}, [](std::string_view) { return false; });
  EXPECT_TRUE(result.interrupted);
  EXPECT_EQ(result.exitCode, 128 + 9);
}

}  // namespace
