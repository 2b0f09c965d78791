#pragma once

#include <cstdint>

/// A moment in calendar fields: month 1 to 12, day 1 to 31, 24 hours.
struct CalendarTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

/// Seconds since 1970 (UTC). With SOURCE_DATE_EPOCH in the environment every clock here stands
/// still at that moment, so that files can be reproduced.
int64_t UnixNow();

/// The present moment in UTC.
CalendarTime UtcNow();

/// The present moment in the user's time zone; UTC when SOURCE_DATE_EPOCH is set.
CalendarTime LocalNow();
