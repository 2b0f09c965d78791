#include "model/route_leg.h"

std::unique_ptr<CRouteOptions> CRouteOptions::Clone() const {
  return std::make_unique<CRouteOptions>(*this);
}

uint32_t CRouteOptions::Capabilities() const { return 1; }

void CRouteOptions::Merge(const CRouteOptions& other) {
  if (mode == 0) mode = other.mode;
  flags |= other.flags;
}

void CGpsRouteStep::Reset() {
  CGpsNamedPoint::Reset();
  measure = CRouteMeasure();
  instruction.clear();
}

CRouteData::CRouteData() : options(std::make_unique<CRouteOptions>()) {}

CRouteData::CRouteData(const CRouteData& other)
    : steps(other.steps),
      travelMode(other.travelMode),
      path(other.path),
      measure(other.measure),
      shape(other.shape),
      color(other.color),
      options(other.options->Clone()) {}

CRouteData& CRouteData::operator=(const CRouteData& other) {
  if (this != &other) *this = CRouteData(other);
  return *this;
}

void CRouteData::Reset() {
  steps.clear();
  travelMode = 0;
  path.points.clear();
  measure = CRouteMeasure();
  shape.points.points.clear();
  color = kDefaultColor;
  options = std::make_unique<CRouteOptions>();
}

uint32_t& CRouteLeg::TotalDistance() { return totalDistance; }
uint32_t CRouteLeg::GetTotalDistance() const { return totalDistance; }
uint32_t& CRouteLeg::TotalDuration() { return totalDuration; }
uint32_t CRouteLeg::GetTotalDuration() const { return totalDuration; }
const CRouteData& CRouteLeg::Route() const { return route; }
CRouteData& CRouteLeg::Route() { return route; }
const CRouteMeasure& CRouteLeg::Measure() const { return route.measure; }
CRouteMeasure& CRouteLeg::Measure() { return route.measure; }
const RouteShape& CRouteLeg::Shape() const { return route.shape; }
RouteShape& CRouteLeg::Shape() { return route.shape; }
