#include "model/point.h"

#include <cmath>

#include "base/numbers.h"
#include "model/point_order.h"
#include "model/projection.h"
#include "model/route_leg.h"
#include "model/sphere_vector.h"

std::unique_ptr<CGpsCoordinate> CGpsCoordinate::Clone() const {
  return std::make_unique<CGpsCoordinate>(*this);
}

bool CGpsCoordinate::IsValid() const { return !IsNull(); }

bool CGpsCoordinate::IsNull() const { return latitude == 0.0 && longitude == 0.0; }

bool CGpsCoordinate::IsNear(const CGpsCoordinate& other) const {
  return KeyOf(*this).IsNear(KeyOf(other));
}

bool CGpsCoordinate::IsFar(const CGpsCoordinate& other) const { return !IsNear(other); }

uint32_t CGpsCoordinate::DistanceToSegment(const CGridSegment& segment) const {
  if (segment.length == 0.0) return 0;
  const CGridCoordinate grid = CMercatorProjection().Project(*this);
  const double toStartX = static_cast<double>(segment.x) - grid.x;
  const double toStartY = static_cast<double>(segment.y) - grid.y;
  return TruncateToUint32(std::abs(toStartY * segment.dx - toStartX * segment.dy) / segment.length);
}

uint32_t CGpsCoordinate::DistanceTo(const CGpsCoordinate& other) const {
  return SphereVector(*this).ChordTo(SphereVector(other));
}

void CGpsCoordinate::Clamp() {
  if (latitude > 90.0) latitude = 90.0;
  if (latitude < -90.0) latitude = -90.0;
  if (longitude > 180.0) longitude = 180.0;
  if (longitude < -180.0) longitude = -180.0;
}

void CGpsCoordinate::Reset() {
  tolerance = kDefaultTolerance;
  latitude = longitude = altitude = 0.0;
}

std::unique_ptr<CGpsCoordinate> CGpsNamedPoint::Clone() const {
  return std::make_unique<CGpsNamedPoint>(*this);
}

void CGpsNamedPoint::Reset() {
  CGpsCoordinate::Reset();
  name.clear();
  comment.clear();
}

bool CGpsNamedPoint::operator==(const CGpsNamedPoint& other) const {
  return IsNear(other) && name == other.name && comment == other.comment;
}

bool CGpsNamedPoint::operator!=(const CGpsNamedPoint& other) const { return !(*this == other); }

bool CGpsNamedPoint::operator<(const CGpsNamedPoint& other) const {
  return KeyOf(*this) < KeyOf(other);
}

CGpsPoint::CGpsPoint() = default;
CGpsPoint::CGpsPoint(const CGpsPoint& other)
    : CGpsNamedPoint(other),
      routeLeg(other.routeLeg ? std::make_unique<CRouteLeg>(*other.routeLeg) : nullptr) {}
CGpsPoint::CGpsPoint(CGpsPoint&& other) noexcept = default;
CGpsPoint::CGpsPoint(const CGpsNamedPoint& other) : CGpsNamedPoint(other) {}
CGpsPoint::~CGpsPoint() = default;
CGpsPoint& CGpsPoint::operator=(CGpsPoint&& other) noexcept = default;

CGpsPoint& CGpsPoint::operator=(const CGpsPoint& other) {
  if (this == &other) return *this;
  routeLeg.reset();
  CGpsNamedPoint::operator=(other);
  if (other.routeLeg) SetRouteLeg(*other.routeLeg);
  return *this;
}

void CGpsPoint::Reset() {
  CGpsNamedPoint::Reset();
  routeLeg.reset();
}

void CGpsPoint::SetRouteLeg(const CRouteLeg& leg) { routeLeg = std::make_unique<CRouteLeg>(leg); }

CRouteLeg* CGpsPoint::GetRouteLeg() const { return routeLeg.get(); }

void CGpsPoint::ClearRouteLeg() { routeLeg.reset(); }
