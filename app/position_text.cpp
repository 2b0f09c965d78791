#include "app/position_text.h"

#include <charconv>
#include <cmath>

#include "base/text.h"

namespace {

constexpr double kHighestLatitude = 90;
constexpr double kHighestLongitude = 180;

std::optional<double> ParseDegrees(std::string_view text, double highest) {
  text = Trim(text, " ");
  double degrees = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, degrees, std::chars_format::fixed);
  // Also false for what is no number.
  const bool isInRange = std::abs(degrees) <= highest;
  if (parsed.ec != std::errc() || parsed.ptr != end || !isInRange) return std::nullopt;
  return degrees;
}

}  // namespace

std::optional<CGpsCoordinate> ParsePosition(std::string_view text) {
  const size_t comma = text.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const auto latitude = ParseDegrees(text.substr(0, comma), kHighestLatitude);
  const auto longitude = ParseDegrees(text.substr(comma + 1), kHighestLongitude);
  if (!latitude || !longitude) return std::nullopt;
  CGpsCoordinate position;
  position.latitude = *latitude;
  position.longitude = *longitude;
  return position;
}
