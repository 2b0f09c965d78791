#include "model/projection.h"

#include <cmath>

#include "base/numbers.h"

namespace {

constexpr double kQuarterPi = 0.7853981633974483;

// Grid arithmetic wraps as the 32-bit registers of the devices do.
int32_t Wrapped(int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

}  // namespace

bool CGridCoordinate::IsValid() const { return !IsNull(); }
bool CGridCoordinate::IsNull() const { return x == 0 && y == 0; }

bool CGridCoordinate::operator==(const CGridCoordinate& other) const {
  return x == other.x && y == other.y;
}

bool CGridCoordinate::operator!=(const CGridCoordinate& other) const { return !(*this == other); }

CGridCoordinate& CGridCoordinate::operator=(const CGridCoordinate& other) = default;

CGridCoordinate& CGridCoordinate::operator+=(int32_t scalar) {
  return *this += CGridCoordinate(scalar, scalar);
}

CGridCoordinate& CGridCoordinate::operator+=(const CGridCoordinate& other) {
  x = Wrapped(int64_t{x} + other.x);
  y = Wrapped(int64_t{y} + other.y);
  return *this;
}

CGridCoordinate& CGridCoordinate::operator-=(int32_t scalar) {
  return *this -= CGridCoordinate(scalar, scalar);
}

CGridCoordinate& CGridCoordinate::operator-=(const CGridCoordinate& other) {
  x = Wrapped(int64_t{x} - other.x);
  y = Wrapped(int64_t{y} - other.y);
  return *this;
}

CGridCoordinate& CGridCoordinate::operator*=(int32_t scalar) {
  x = Wrapped(int64_t{x} * scalar);
  y = Wrapped(int64_t{y} * scalar);
  return *this;
}

CGridCoordinate& CGridCoordinate::operator/=(int32_t scalar) {
  x = Wrapped(int64_t{x} / scalar);
  y = Wrapped(int64_t{y} / scalar);
  return *this;
}

CGridCoordinate& CGridCoordinate::operator%=(int32_t scalar) {
  x = Wrapped(int64_t{x} % scalar);
  y = Wrapped(int64_t{y} % scalar);
  return *this;
}

CGridCoordinate CGridCoordinate::operator+(const CGridCoordinate& other) const {
  CGridCoordinate sum(*this);
  sum += other;
  return sum;
}

CGridCoordinate CGridCoordinate::operator-() const {
  return {Wrapped(-int64_t{x}), Wrapped(-int64_t{y})};
}

CGridCoordinate CGridCoordinate::operator-(const CGridCoordinate& other) const {
  CGridCoordinate difference(*this);
  difference -= other;
  return difference;
}

void CGridCoordinate::Reset() { x = y = 0; }

CGridSegment::CGridSegment(const CGpsCoordinate& start, const CGpsCoordinate& end)
    : CGridCoordinate(CMercatorProjection().Project(start)) {
  const CGridCoordinate stop = CMercatorProjection().Project(end);
  dx = static_cast<double>(stop.x) - x;
  dy = static_cast<double>(stop.y) - y;
  length = std::sqrt(dx * dx + dy * dy);
}

CGridCoordinate CMercatorProjection::Project(const CGpsCoordinate& position) const {
  const double east = position.longitude / kDegreesPerRadian * m_radius;
  const double north =
      std::log(std::tan(position.latitude / kDegreesPerRadian * 0.5 + kQuarterPi)) * m_radius;
  return {TruncateToInt32(std::nearbyint(east)), TruncateToInt32(std::nearbyint(north))};
}

CGpsCoordinate CMercatorProjection::Unproject(const CGridCoordinate& grid) const {
  CGpsCoordinate position;
  position.latitude = (std::atan(std::exp(grid.y / m_radius)) - kQuarterPi) * 2 * kDegreesPerRadian;
  position.longitude = grid.x / m_radius * kDegreesPerRadian;
  position.Clamp();
  return position;
}
