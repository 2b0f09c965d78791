#include "markup/repeat_allowance.h"

#include <gtest/gtest.h>

namespace {

constexpr size_t kSpare = 1048576;

TEST(RepeatAllowance, AMegabyteIsFree) {
  RepeatAllowance allowance;
  EXPECT_FALSE(allowance.TakeCopy(kSpare + 1));
  EXPECT_TRUE(allowance.TakeCopy(kSpare - 100));
  EXPECT_FALSE(allowance.TakeCopy(101));
  EXPECT_TRUE(allowance.TakeCopy(100));
  EXPECT_FALSE(allowance.TakeCopy(65));
}

TEST(RepeatAllowance, EveryTextMayBeRepeatedFourTimes) {
  RepeatAllowance allowance;
  EXPECT_TRUE(allowance.TakeCopy(kSpare));
  allowance.AddText(1000);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(allowance.TakeCopy(1000));
  EXPECT_FALSE(allowance.TakeCopy(1000));
}

TEST(RepeatAllowance, ShortTextsCostNothing) {
  RepeatAllowance allowance;
  for (size_t i = 0; i <= kSpare; ++i) ASSERT_TRUE(allowance.TakeCopy(64));
  EXPECT_TRUE(allowance.TakeCopy(kSpare));
  EXPECT_TRUE(allowance.TakeCopy(64));
  EXPECT_TRUE(allowance.TakeCopy(0));
}

}  // namespace
