#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/point_list.h"

/// A list of unnamed points from pairs of latitude and longitude.
inline CGpsPointList PointsOf(std::initializer_list<std::pair<double, double>> positions) {
  CGpsPointList list;
  for (const auto& [latitude, longitude] : positions) {
    auto point = std::make_unique<CGpsNamedPoint>();
    point->latitude = latitude;
    point->longitude = longitude;
    list.points.push_back(std::move(point));
  }
  return list;
}

/// So many points on a meridian, a hundredth of a degree apart.
inline CGpsPointList PointsInARow(size_t count) {
  CGpsPointList list;
  for (size_t i = 0; i < count; ++i) {
    auto point = std::make_unique<CGpsNamedPoint>();
    point->latitude = 48.0 + static_cast<double>(i) * 0.01;
    point->longitude = 7.0;
    list.points.push_back(std::move(point));
  }
  return list;
}

/// The positions of a list as pairs of latitude and longitude.
inline std::vector<std::pair<double, double>> PositionsOf(const CGpsPointList& list) {
  std::vector<std::pair<double, double>> positions;
  for (const auto& point : list.points) positions.emplace_back(point->latitude, point->longitude);
  return positions;
}

/// The names of a list.
inline std::vector<std::string> NamesOf(const CGpsPointList& list) {
  std::vector<std::string> names;
  for (const auto& point : list.points) names.push_back(point->name);
  return names;
}
