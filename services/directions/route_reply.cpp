#include "services/directions/route_reply.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

void PointAllowance::TakeOrThrow() {
  if (!Take()) throw CJsonException(kJsonTooBig, {});
}

CGpsNamedPoint& AppendPoint(CGpsPointList& points, double latitude, double longitude) {
  auto point = std::make_unique<CGpsNamedPoint>();
  CGpsNamedPoint& appended = *point;
  appended.latitude = latitude;
  appended.longitude = longitude;
  points.points.push_back(std::move(point));
  return appended;
}

CGpsNamedPoint& AppendPoint(CGpsPointList& points, const CGpsNamedPoint& point) {
  points.points.push_back(std::make_unique<CGpsNamedPoint>(point));
  return *points.points.back();
}

CGpsNamedPoint& AppendPoint(CGpsPointList& points, const CJsonValue& position,
                            std::string_view latitudeKey, std::string_view longitudeKey) {
  const double latitude = position.Get(latitudeKey).AsNumber();
  return AppendPoint(points, latitude, position.Get(longitudeKey).AsNumber());
}

uint32_t RoundedUint32(double value) {
  const double rounded = std::round(value);
  const bool fits = rounded >= 0.0 && rounded <= std::numeric_limits<uint32_t>::max();
  return fits ? static_cast<uint32_t>(rounded) : 0;
}

uint32_t RoundedMember(const CJsonValue& object, std::string_view key) {
  return RoundedUint32(object.Get(key).AsNumber());
}

uint32_t RoundedMemberOrZero(const CJsonValue& object, std::string_view key) {
  return object.AsObject().Find(key) ? RoundedMember(object, key) : 0;
}

CRouteMeasure MakeMeasure(uint32_t distance, uint32_t duration) {
  CRouteMeasure measure;
  measure.distance = distance;
  measure.duration = duration;
  measure.flag = 1;
  return measure;
}

CRouteData MakeLeg(uint32_t travelMode, const CRouteOptions& options) {
  CRouteData leg;
  leg.travelMode = travelMode;
  leg.options = options.Clone();
  return leg;
}

void TakePathFromShape(CRouteData& leg) {
  const auto& shape = leg.shape.points.points;
  if (shape.empty()) return;
  AppendPoint(leg.path, *shape.front());
  AppendPoint(leg.path, *shape.back());
}

ShapeIndex::ShapeIndex(const CGpsPointList& line) {
  m_points.reserve(line.points.size());
  for (const auto& point : line.points) m_points.push_back(point.get());
}

void ShapeIndex::TakePosition(size_t index, CGpsCoordinate& position) const {
  if (m_points.empty()) return;
  const CGpsCoordinate& place = *m_points[std::min(index, m_points.size() - 1)];
  position = place;
}

void ShapeIndex::Append(size_t from, size_t to, CGpsPointList& points,
                        PointAllowance& allowance) const {
  for (size_t i = from; i <= to && i < m_points.size(); ++i) {
    allowance.TakeOrThrow();
    AppendPoint(points, *m_points[i]);
  }
}
