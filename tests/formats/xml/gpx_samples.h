#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "model/point_list.h"
#include "tests/file_content.h"

/// The clock stands at 2024-05-01 10:00:00 UTC as long as one of these lives.
class FixedClock {
 public:
  FixedClock() {
    if (s_count++ == 0) setenv("SOURCE_DATE_EPOCH", "1714557600", 1);
  }
  ~FixedClock() {
    if (--s_count == 0) unsetenv("SOURCE_DATE_EPOCH");
  }
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;

 private:
  static inline int s_count = 0;
};

/// A file of the fuzzers' corpus.
inline std::string Sample(std::string_view name) {
  return ContentOf(fmt::format("{}/fuzz/corpus/{}", CORVANE_SOURCE_FOLDER, name));
}

/// Lists in short: a line each, with kind, name and positions of six digits.
inline std::string Outline(const PointLists& lists) {
  constexpr std::string_view kKinds[] = {"route", "track", "waypoints", "pois"};
  std::string outline;
  for (const auto& list : lists) {
    outline += fmt::format("{} '{}':", kKinds[list->GetKind()], list->name);
    for (const CGpsPoint& point : list->points)
      outline += fmt::format(" {:.8g},{:.8g}", point.latitude, point.longitude);
    outline += '\n';
  }
  return outline;
}
