#pragma once

#include <cstdlib>

/// The clock stands still as long as this lives, at a moment given in seconds since 1970 (UTC).
class StoppedClock {
 public:
  explicit StoppedClock(const char* unixTime) { setenv("SOURCE_DATE_EPOCH", unixTime, 1); }
  ~StoppedClock() { unsetenv("SOURCE_DATE_EPOCH"); }
  StoppedClock(const StoppedClock&) = delete;
  StoppedClock& operator=(const StoppedClock&) = delete;
};
