#pragma once

#include <string>
#include <utility>

#include "model/point_list.h"

/// A point in one expression, for the lists of tests.
inline CGpsPoint MakePoint(double latitude, double longitude, std::string name = {},
                           std::string comment = {}, double altitude = 0.0) {
  CGpsPoint point;
  point.latitude = latitude;
  point.longitude = longitude;
  point.altitude = altitude;
  point.name = std::move(name);
  point.comment = std::move(comment);
  return point;
}

/// A list with a name and points in one expression.
template <typename List = CGpsRoute, typename... Points>
List MakeList(const std::string& name, const Points&... points) {
  List list;
  list.name = name;
  (list.points.push_back(points), ...);
  return list;
}
