#pragma once

#include <cstdint>
#include <string>

/// How positions are shown; the values of the setting `Coordinates`.
enum class CoordinateFormat : uint32_t { kDegrees = 0, kMinutes = 1, kSeconds = 2 };

/// An angle taken apart. Minutes carry their fraction, of which `seconds` is the whole minute's
/// remainder times 60.
struct AngleParts {
  bool negative;
  uint32_t degrees;
  double minutes;
  double seconds;
};

AngleParts DecomposeAngle(double degrees);

/// The reverse: whole degrees, minutes and seconds, and the sign.
double ComposeAngle(bool negative, double degrees, double minutes, double seconds);

/// A distance with its unit right behind: metres and kilometres, or yards and miles.
std::string FormatDistance(uint32_t metres, bool miles);

/// Hours and minutes; seconds are dropped, hours may exceed 24.
std::string FormatDuration(uint32_t seconds);

/// A latitude or longitude for the user, in UTF-8.
std::string FormatCoordinate(double degrees, bool isLatitude, CoordinateFormat format);
