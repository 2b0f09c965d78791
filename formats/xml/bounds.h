#pragma once

#include "model/point_list.h"

/// The least and greatest coordinates of a list, in degrees; all 0 for an empty one.
struct Bounds {
  explicit Bounds(const CGpsPointArray& list);

  double minLatitude = 0.0;
  double minLongitude = 0.0;
  double maxLatitude = 0.0;
  double maxLongitude = 0.0;
};
