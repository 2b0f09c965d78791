#include "base/measure_text.h"

#include <cmath>

#include <fmt/printf.h>

#include "base/numbers.h"

namespace {

constexpr double kMetresPerKilometre = 1000.0;
constexpr double kKilometresPerMile = 1.609344;
constexpr double kMetresPerMile = 1609.344;
constexpr double kMetresPerYard = 0.9144;

}  // namespace

AngleParts DecomposeAngle(double degrees) {
  const double magnitude = std::abs(degrees);
  const double wholeDegrees = std::floor(magnitude);
  const double minutes = (magnitude - wholeDegrees) * 60.0;
  return {degrees < 0.0, TruncateToUint32(wholeDegrees), minutes,
          (minutes - std::floor(minutes)) * 60.0};
}

double ComposeAngle(bool negative, double degrees, double minutes, double seconds) {
  const double magnitude = degrees + minutes / 60.0 + seconds / 3600.0;
  return negative ? -magnitude : magnitude;
}

std::string FormatDistance(uint32_t metres, bool miles) {
  if (miles) {
    if (metres < kMetresPerMile) return fmt::sprintf("%.0f%s", metres / kMetresPerYard, "yd");
    return fmt::sprintf("%.1f%s", metres / kMetresPerKilometre / kKilometresPerMile, "mi");
  }
  if (metres < 1000) return fmt::sprintf("%d%s", metres, "m");
  return fmt::sprintf("%.1f%s", metres / kMetresPerKilometre, "km");
}

std::string FormatDuration(uint32_t seconds) {
  return fmt::sprintf("%02d:%02d", seconds / 3600, seconds % 3600 / 60);
}

std::string FormatCoordinate(double degrees, bool isLatitude, CoordinateFormat format) {
  if (format == CoordinateFormat::kDegrees) return ToFixedString(degrees, 6);
  const AngleParts parts = DecomposeAngle(degrees);
  const char hemisphere = isLatitude ? (parts.negative ? 'S' : 'N') : (parts.negative ? 'W' : 'E');
  if (format == CoordinateFormat::kMinutes)
    return fmt::sprintf("%c%d\u00b0%.2f'", hemisphere, parts.degrees, parts.minutes);
  return fmt::sprintf("%c%d\u00b0%d'%.2f\"", hemisphere, parts.degrees,
                      TruncateToUint32(parts.minutes), parts.seconds);
}
