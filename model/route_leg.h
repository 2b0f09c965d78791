#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "model/point.h"
#include "model/point_list.h"

/// Distance and duration of a way.
class CRouteMeasure {
 public:
  virtual ~CRouteMeasure() = default;
  CRouteMeasure() = default;
  CRouteMeasure(const CRouteMeasure&) = default;
  CRouteMeasure& operator=(const CRouteMeasure&) = default;

  uint32_t distance = 0;  ///< metres
  uint32_t duration = 0;  ///< seconds
  uint8_t flag = 0;
};

/// What is asked of a directions provider; providers derive their own.
class CRouteOptions {
 public:
  virtual ~CRouteOptions() = default;
  /// A new object of the same class.
  virtual std::unique_ptr<CRouteOptions> Clone() const;
  /// Bit mask of what the options can express; 1 here.
  virtual uint32_t Capabilities() const;
  /// Takes the other's mode where there is none, and adds its flags.
  virtual void Merge(const CRouteOptions& other);

  uint32_t mode = 0;
  uint8_t flags = 1;

  CRouteOptions() = default;
  CRouteOptions(const CRouteOptions&) = default;
  CRouteOptions& operator=(const CRouteOptions&) = default;
};

/// One instruction of a leg, at the place where it applies.
class CGpsRouteStep : public CGpsNamedPoint {
 public:
  void Reset() override;

  CRouteMeasure measure;
  std::string instruction;
};

/// A polyline that can be handed around as one thing: the points that the planner draws.
class RouteShape {
 public:
  CGpsPointList points;
};

/// A calculated leg.
class CRouteData {
 public:
  CRouteData();
  CRouteData(const CRouteData& other);
  CRouteData(CRouteData&&) = default;
  CRouteData& operator=(const CRouteData& other);
  CRouteData& operator=(CRouteData&&) = default;
  virtual ~CRouteData() = default;

  /// Back to an empty leg with default options.
  virtual void Reset();

  std::deque<CGpsRouteStep> steps;
  uint32_t travelMode = 0;
  CGpsPointList path;  ///< the polyline as it was delivered
  CRouteMeasure measure;
  RouteShape shape;
  uint32_t color = kDefaultColor;
  std::unique_ptr<CRouteOptions> options;  ///< what the leg was requested with; never null

 private:
  static constexpr uint32_t kDefaultColor = 255;
};

/// What directions have given for the way from the previous point of a list to the owning one.
class CRouteLeg {
 public:
  virtual ~CRouteLeg() = default;
  virtual uint32_t& TotalDistance();
  virtual uint32_t GetTotalDistance() const;
  virtual uint32_t& TotalDuration();
  virtual uint32_t GetTotalDuration() const;
  virtual const CRouteData& Route() const;
  virtual CRouteData& Route();
  virtual const CRouteMeasure& Measure() const;
  virtual CRouteMeasure& Measure();
  virtual const RouteShape& Shape() const;
  virtual RouteShape& Shape();

  uint32_t totalDistance = 0;  ///< metres from the start of the itinerary; 0 = unknown
  uint32_t totalDuration = 0;  ///< seconds from the start of the itinerary; 0 = unknown
  CRouteData route;
  int32_t provider = 0;  ///< number of the directions provider that gave the leg

  CRouteLeg() = default;
  CRouteLeg(const CRouteLeg&) = default;
  CRouteLeg& operator=(const CRouteLeg&) = default;
};
