#include "platform/clock.h"

#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

namespace {

TEST(Clock, StandsStillAtTheSourceDate) {
  setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
  setenv("TZ", "Asia/Tokyo", 1);
  tzset();
  EXPECT_EQ(UnixNow(), 1700000000);
  for (const CalendarTime& now : {UtcNow(), LocalNow()}) {
    EXPECT_EQ(now.year, 2023);
    EXPECT_EQ(now.month, 11);
    EXPECT_EQ(now.day, 14);
    EXPECT_EQ(now.hour, 22);
    EXPECT_EQ(now.minute, 13);
    EXPECT_EQ(now.second, 20);
  }
  unsetenv("SOURCE_DATE_EPOCH");
  unsetenv("TZ");
  tzset();
}

TEST(Clock, RunsOtherwise) {
  for (const char* value :
       {"", "soon", "12x", "253402300800", "9223372036854775807", "-62167219201"}) {
    setenv("SOURCE_DATE_EPOCH", value, 1);
    EXPECT_GE(UnixNow(), std::time(nullptr) - 2);
  }
  unsetenv("SOURCE_DATE_EPOCH");
  EXPECT_GE(UtcNow().year, 2024);
  EXPECT_GE(LocalNow().year, 2024);
}

}  // namespace
