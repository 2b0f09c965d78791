#include "platform/debug_log.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

TEST(DebugLog, WritesALineToStandardErrorWhenAskedTo) {
  setenv("CORVANE_DEBUG", "1", 1);
  testing::internal::CaptureStderr();
  DebugLog("line 3: mismatched tag");
  const std::string asked = testing::internal::GetCapturedStderr();
  unsetenv("CORVANE_DEBUG");
  testing::internal::CaptureStderr();
  DebugLog("line 4: mismatched tag");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(asked, "line 3: mismatched tag\n");
}

}  // namespace
