#include "platform/clock.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>

namespace {

// The years 0 to 9999, which every calendar of the formats can show.
constexpr int64_t kEarliestMoment = -62167219200;
constexpr int64_t kLatestMoment = 253402300799;

// The moment at which all clocks stand, if the user wants reproducible files.
std::optional<int64_t> FixedMoment() {
  const char* text = std::getenv("SOURCE_DATE_EPOCH");
  if (!text || !*text) return std::nullopt;
  int64_t moment = 0;
  const char* end = text + std::strlen(text);
  const auto parsed = std::from_chars(text, end, moment);
  if (parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  if (moment < kEarliestMoment || moment > kLatestMoment) return std::nullopt;
  return moment;
}

CalendarTime ToCalendar(const std::tm& fields) {
  return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
          fields.tm_hour,        fields.tm_min,     fields.tm_sec};
}

}  // namespace

int64_t UnixNow() { return FixedMoment().value_or(static_cast<int64_t>(std::time(nullptr))); }

CalendarTime UtcNow() {
  const std::time_t now = UnixNow();
  std::tm fields{};
  gmtime_r(&now, &fields);
  return ToCalendar(fields);
}

CalendarTime LocalNow() {
  if (FixedMoment()) return UtcNow();
  const std::time_t now = UnixNow();
  std::tm fields{};
  localtime_r(&now, &fields);
  return ToCalendar(fields);
}
